#version 120
#extension GL_EXT_geometry_shader4 : require

uniform float size;

void corner(float x, float y) {
    gl_Position = gl_ModelViewProjectionMatrix * (gl_PositionIn[0] + vec4(x * size, y * size, 0.0, 0.0));
    gl_FrontColor = gl_FrontColorIn[0];
    EmitVertex();
}

void main() {
    corner(-1.0, -1.0);
    corner(1.0, -1.0);
    corner(-1.0, 1.0);
    corner(1.0, 1.0);
    EndPrimitive();
}

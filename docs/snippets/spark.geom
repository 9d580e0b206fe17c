#version 120
#extension GL_EXT_geometry_shader4 : enable

varying in vec2 size[];

// Each point becomes a bar of its size.
void main() {
    for (int corner = 0; corner < 4; ++corner) {
        vec2 side = vec2(mod(float(corner), 2.0) - 0.5, float(corner / 2) - 0.5);
        vec4 place = gl_PositionIn[0] + vec4(side * size[0], 0.0, 0.0);
        gl_Position = gl_ModelViewProjectionMatrix * place;
        gl_FrontColor = gl_FrontColorIn[0];
        EmitVertex();
    }
}

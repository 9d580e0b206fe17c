#version 120
#extension GL_EXT_geometry_shader4 : enable

void square(float x, vec4 color) {
    for (int corner = 0; corner < 4; ++corner) {
        vec2 place = vec2(x + float(corner - corner / 2 * 2) * 2.0, 6.0 + float(corner / 2) * 3.0);
        gl_Position = gl_ModelViewProjectionMatrix * vec4(place, 0.0, 1.0);
        gl_FrontColor = color;
        EmitVertex();
    }
    EndPrimitive();
}

void main() {
    square(0.0, gl_FrontColorIn[0]);
    square(2.0, gl_BackColorIn[0]);
    square(4.0, gl_FrontSecondaryColorIn[0]);
    square(6.0, gl_BackSecondaryColorIn[0]);
    square(8.0, vec4(gl_FogFragCoordIn[0] == 3.0, 1.0, 1.0, 1.0));
    square(10.0, vec4(gl_PointSizeIn[0] == 5.0, 0.0, 0.0, 1.0));
    square(12.0, vec4(gl_ClipVertexIn[0] == vec4(3.0, 5.0, 0.0, 1.0), 0.0, 1.0, 1.0));
}

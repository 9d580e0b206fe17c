#version 120
#extension GL_EXT_geometry_shader4 : enable
#define COORD gl_TexCoordIn

varying in vec4 gl_TexCoordIn[gl_VerticesIn][3];

uniform int one;

// A bar of three squares for each line: each in the color that one set of coordinates of one end has.
void main() {
    for (int set = 0; set < 3; ++set) {
        for (int corner = 0; corner < 4; ++corner) {
            vec4 step = vec4(float(set + corner / 2) * 4.0, float(corner) * 4.0 - float(corner / 2) * 8.0, 0.0, 0.0);
            gl_Position = gl_ModelViewProjectionMatrix * (gl_PositionIn[0] + step);
            gl_FrontColor = set == 1 ? gl_TexCoordIn[0][1] : COORD[one][set];
            gl_TexCoord[0] = gl_FrontColor;
            EmitVertex();
        }
        EndPrimitive();
    }
}

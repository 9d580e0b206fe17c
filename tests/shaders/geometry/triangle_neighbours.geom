#version 120
#extension GL_EXT_geometry_shader4 : enable

// The neighbours of a triangle, and not the triangle.
void main() {
    for (int i = 1; i < gl_VerticesIn; i += 2) {
        for (int j = i - 1; j < i + 2; ++j) {
            int k = j == gl_VerticesIn ? 0 : j;
            gl_Position = gl_ModelViewProjectionMatrix * gl_PositionIn[k];
            gl_FrontColor = gl_FrontColorIn[i];
            EmitVertex();
        }
        EndPrimitive();
    }
}

#extension GL_ARB_geometry_shader4 : enable

// From the line's first neighbour to the last one, around both ends.
void main() {
    for (int i = 0; i < gl_PositionIn.length(); ++i) {
        gl_Position = gl_ModelViewProjectionMatrix * gl_PositionIn[i];
        gl_FrontColor = gl_FrontColorIn[1];
        EmitVertex();
    }
}

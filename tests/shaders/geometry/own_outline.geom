#version 330 compatibility
#extension GL_EXT_geometry_shader4 : enable
layout(triangles) in;
layout(line_strip, max_vertices = 4) out;
in vec4 tint[];

void main() {
    for (int i = 0; i <= gl_in.length(); ++i) {
        gl_Position = gl_ModelViewProjectionMatrix * gl_in[i % 3].gl_Position;
        gl_FrontColor = tint[0];
        EmitVertex();
    }
}

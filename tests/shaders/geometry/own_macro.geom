#version 150 compatibility
#define TAKES(type) layout(type) in
TAKES(lines);
layout(points, max_vertices = 3) out;

void main() {
    for (int i = 0; i < 3; ++i) {
        gl_Position = gl_ModelViewProjectionMatrix *
            mix(gl_in[0].gl_Position, gl_in[1].gl_Position, float(i) / 2.0);
        gl_FrontColor = gl_in[i / 2].gl_FrontColor;
        EmitVertex();
    }
}

#version 400 compatibility
layout(triangles, invocations = 2) in;
layout(triangle_strip, max_vertices = 3) out;

void main() {
    for (int i = 0; i < 3; ++i) {
        gl_Position = gl_ModelViewProjectionMatrix * (gl_in[i].gl_Position + vec4(gl_InvocationID * 8, 0, 0, 0));
        gl_FrontColor = gl_in[2 * gl_InvocationID].gl_FrontColor;
        EmitVertex();
    }
}

#version 150 compatibility
layout(points) in;
layout(triangle_strip, max_vertices = 4) out;

// Not gl_PositionIn.
void main() {
    for (int corner = 0; corner < 4; ++corner) {
        vec4 step = vec4(corner % 2 * 4, corner / 2 * 2, 0, 0);
        gl_Position = gl_ModelViewProjectionMatrix * (gl_in[0].gl_Position + step);
        gl_FrontColor = gl_in[0].gl_FrontColor;
        EmitVertex();
    }
}

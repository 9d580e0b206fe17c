#version 120

varying float up;

void main() {
    up = gl_Vertex.y;
    gl_Position = vec4(gl_Vertex.xy, 0.0, 1.0);
}

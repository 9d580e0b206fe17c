#version 120

varying vec2 place;

void main() {
    place = gl_Vertex.xy;
    gl_Position = vec4(gl_Vertex.xy, 0.9999, 1.0);
}

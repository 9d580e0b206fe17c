#version 120

uniform vec3 eye;
varying vec3 ray;

void main() {
    ray = gl_Vertex.xyz;
    gl_Position = gl_ModelViewProjectionMatrix * vec4(eye + gl_Vertex.xyz, 1.0);
}

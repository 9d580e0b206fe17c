#version 120

uniform vec3 axis, right, ahead;
varying vec3 world;

void main() {
    world = gl_Vertex.x * right + gl_Vertex.y * ahead;
    gl_Position = gl_ModelViewProjectionMatrix * vec4(world, 1.0);
}

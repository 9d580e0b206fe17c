#version 120

uniform vec3 turned[3]; // the knot's own axes in the world
varying vec3 world, normal;

void main() {
    mat3 turn = mat3(turned[0], turned[1], turned[2]);
    world = turn * gl_Vertex.xyz;
    normal = turn * gl_Normal;
    gl_Position = gl_ModelViewProjectionMatrix * vec4(world, 1.0);
}

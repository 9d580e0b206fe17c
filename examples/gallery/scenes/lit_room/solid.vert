#version 120

uniform vec3 center, extent;
varying vec3 world, normal;

void main() {
    world = center + extent * gl_Vertex.xyz;
    normal = gl_Normal;
    gl_Position = gl_ModelViewProjectionMatrix * vec4(world, 1.0);
}

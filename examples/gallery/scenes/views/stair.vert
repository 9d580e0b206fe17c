#version 120

uniform vec3 center, extent, right, ahead;
varying vec3 world, normal;

void main() {
    vec3 p = extent * gl_Vertex.xyz;
    world = center + p.x * right + p.y * vec3(0.0, 1.0, 0.0) + p.z * ahead;
    normal = gl_Normal.x * right + gl_Normal.y * vec3(0.0, 1.0, 0.0) + gl_Normal.z * ahead;
    gl_Position = gl_ModelViewProjectionMatrix * vec4(world, 1.0);
}

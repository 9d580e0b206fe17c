#version 120

uniform vec3 center, extent, right, ahead;
uniform mat4 fromSun;
varying vec3 world, normal, sunPlace;

void main() {
    vec3 p = extent * gl_Vertex.xyz;
    world = center + p.x * right + p.y * vec3(0.0, 1.0, 0.0) + p.z * ahead;
    normal = gl_Normal.x * right + gl_Normal.y * vec3(0.0, 1.0, 0.0) + gl_Normal.z * ahead;
    sunPlace = (fromSun * vec4(world + 0.025 * normal, 1.0)).xyz * 0.5 + 0.5;
    gl_Position = gl_ModelViewProjectionMatrix * vec4(world, 1.0);
}

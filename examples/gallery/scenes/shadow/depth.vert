#version 120

uniform vec3 center, extent, right, ahead;
uniform mat4 fromSun;

void main() {
    vec3 p = extent * gl_Vertex.xyz;
    gl_Position = fromSun * vec4(center + p.x * right + p.y * vec3(0.0, 1.0, 0.0) + p.z * ahead, 1.0);
}

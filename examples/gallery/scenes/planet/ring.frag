#version 120

// Bands of dust, in the planet's shadow behind it.
uniform vec3 sun;
uniform vec2 ring;
varying vec3 world;

float band(float at, float from, float to) {
    return smoothstep(from, from + 0.02, at) * smoothstep(to, to - 0.02, at);
}

void main() {
    float at = (length(world) - ring.x) / (ring.y - ring.x);
    float fine = 0.75 + 0.14 * sin(61.0 * at) + 0.11 * sin(137.0 * at + 2.0);
    float dust = fine * (0.35 * band(at, 0.0, 0.24) + 0.9 * band(at, 0.26, 0.68) + 0.6 * band(at, 0.74, 0.98));
    vec3 color = mix(vec3(0.95, 0.72, 0.52), vec3(0.72, 0.74, 0.86), at);
    float along = dot(world, sun);
    float shadow = along < 0.0 ? smoothstep(0.98, 1.04, length(world - along * sun)) : 1.0;
    gl_FragColor = vec4(color * (0.06 + 0.94 * shadow), 1.0) * dust;
}

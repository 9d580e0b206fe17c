#version 120

// Lit where the depth texture that the sun has drawn holds nothing nearer.
uniform sampler2D texture0;
uniform vec3 sun, eye, color, sky;
uniform float side, ground; // the depth texture's, in pixels
varying vec3 world, normal, sunPlace;

float lit(vec2 at, float depth) {
    return step(depth, texture2D(texture0, (at + 0.5) / side).r);
}

// Between four pixels' answers as between four pixels' colours.
float between(vec2 at, float depth) {
    vec2 corner = floor(at), part = at - corner;
    return mix(mix(lit(corner, depth), lit(corner + vec2(1.0, 0.0), depth), part.x),
               mix(lit(corner + vec2(0.0, 1.0), depth), lit(corner + 1.0, depth), part.x), part.y);
}

float sunlight() {
    vec2 at = sunPlace.xy * side - 0.5;
    float depth = sunPlace.z - 0.0006;
    if (max(abs(sunPlace.x - 0.5), abs(sunPlace.y - 0.5)) > 0.497)
        return 1.0;
    return 0.5 * (between(at + vec2(-0.5, -0.3), depth) + between(at + vec2(0.5, 0.3), depth));
}

void main() {
    vec3 n = normalize(normal);
    float far = length(world.xz), facing = max(dot(n, sun), 0.0);
    vec3 surface = color;
    // Rings in the sand.
    float line = abs(fract(far * 2.2) - 0.5), fine = fwidth(far * 2.2);
    surface *= 1.0 - 0.10 * ground * smoothstep(0.1 + fine, 0.1 - fine, line) * smoothstep(9.0, 3.0, far);
    float low = 1.0 - smoothstep(0.1, 0.55, sun.y);
    vec3 light = mix(vec3(1.0, 0.93, 0.82), vec3(1.0, 0.66, 0.42), low) * 1.15;
    vec3 shade = mix(vec3(0.30, 0.27, 0.46), vec3(0.34, 0.30, 0.48), n.y) + vec3(0.16, 0.07, 0.03) * max(-n.y, 0.0);
    vec3 sum = surface * (shade + light * facing * sunlight());
    float haze = ground * smoothstep(5.0, 17.0, length(world - vec3(0.0, 0.0, 3.0)));
    gl_FragColor = vec4(mix(sum, sky, haze), 1.0);
}

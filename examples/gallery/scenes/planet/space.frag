#version 120

// Stars, a pale band of dust, and the light that the planet's air scatters around it.
uniform vec2 size, planet; // the planet's middle in the picture, -1 to 1 upward
uniform vec3 sun;
uniform float radius, time;
varying vec2 place;

float hashed(vec2 p) {
    vec3 q = fract(p.xyx * vec3(0.1031, 0.1030, 0.0973));
    q += dot(q, q.yzx + 33.33);
    return fract((q.x + q.y) * q.z);
}

float smoothed(vec2 p) {
    vec2 cell = floor(p), f = fract(p);
    f = f * f * (3.0 - 2.0 * f);
    return mix(mix(hashed(cell), hashed(cell + vec2(1.0, 0.0)), f.x),
               mix(hashed(cell + vec2(0.0, 1.0)), hashed(cell + 1.0), f.x), f.y);
}

vec3 stars(vec2 p, float cells) {
    p *= cells;
    vec2 cell = floor(p);
    float chance = hashed(cell + cells);
    vec2 at = cell + 0.2 + 0.6 * vec2(hashed(cell + 7.3), hashed(cell + 3.1));
    float bright = pow(chance, 11.0) * (0.8 + 0.2 * sin(time * (1.0 + 2.0 * hashed(cell + 1.7)) + 40.0 * chance));
    // No star is smaller than a pixel.
    float wide = max(0.07, 1.1 * cells / size.y);
    vec3 tint = mix(vec3(1.0, 0.75, 0.55), vec3(0.7, 0.85, 1.0), hashed(cell + 9.9));
    return tint * bright * smoothstep(wide, 0.25 * wide, length(p - at));
}

void main() {
    vec2 p = place * vec2(size.x / size.y, 1.0);
    float across = dot(p, vec2(-0.45, 0.89)) + 0.25;
    float cloud = smoothed(2.3 * p) + 0.7 * smoothed(5.9 * p);
    float band = exp(-5.0 * across * across) * cloud;
    vec3 color = mix(vec3(0.012, 0.016, 0.045), vec3(0.03, 0.025, 0.09), 0.5 + 0.5 * p.y);
    color += band * mix(vec3(0.10, 0.06, 0.16), vec3(0.16, 0.10, 0.12), cloud - 0.5);
    vec2 drift = p + vec2(0.004 * time, 0.0);
    color += stars(drift, 11.0) + (0.7 + band) * stars(drift + 9.0, 27.0);
    vec2 off = p - planet;
    float far = length(off) / radius - 1.0;
    float lit = smoothstep(-0.75, 0.9, dot(normalize(off), normalize(sun.xy)));
    color += lit * lit * (vec3(0.25, 0.55, 0.95) * exp(-16.0 * max(far, 0.0)) * 0.9 +
                          vec3(0.10, 0.18, 0.36) * exp(-3.5 * max(far, 0.0)) * 0.5);
    gl_FragColor = vec4(color, 1.0);
}

#version 120

// The Julia set of z * z + c, with c going around. The derivative of the walk tells how far away the set is
// and which way it slopes, so it is lit like a relief.
uniform float time;
uniform vec2 mouse, size;

const vec3 kNight = vec3(0.03, 0.05, 0.12), kTeal = vec3(0.04, 0.36, 0.42), kCream = vec3(1.0, 0.88, 0.68),
           kCoral = vec3(0.93, 0.33, 0.22), kPlum = vec3(0.24, 0.06, 0.24);

vec2 times(vec2 a, vec2 b) {
    return vec2(a.x * b.x - a.y * b.y, a.x * b.y + a.y * b.x);
}

// Night, teal, cream, coral, plum and night again for 0 to 1.
vec3 palette(float t) {
    t = 5.0 * fract(t);
    vec3 color = mix(kNight, kTeal, smoothstep(0.0, 1.0, t));
    color = mix(color, kCream, smoothstep(1.0, 2.0, t));
    color = mix(color, kCoral, smoothstep(2.0, 3.0, t));
    color = mix(color, kPlum, smoothstep(3.0, 4.0, t));
    return mix(color, kNight, smoothstep(4.0, 5.0, t));
}

void main() {
    // It lies along the longer side.
    vec2 place = (gl_TexCoord[0].st - 0.5 * size) * 2.3 / min(max(size.x, size.y), 1.4 * min(size.x, size.y));
    if (size.y > size.x)
        place = place.yx;
    float sway = 2.75 + 0.12 * sin(0.17 * time);
    vec2 z = times(place * (1.45 - 0.8 * abs(mouse.y - 0.5)), vec2(cos(sway), sin(sway)));
    float pixel = 2.3 / min(size.x, size.y);

    // A little outside of the edge of the Mandelbrot set, where the most happens.
    float angle = 2.05 + 0.11 * sin(0.21 * time) + 1.2 * (mouse.x - 0.5);
    vec2 once = vec2(cos(angle), sin(angle));
    vec2 c = 1.02 * (0.5 * once - 0.25 * times(once, once));

    vec2 slope = vec2(1.0, 0.0);
    float count = 0.0, trap = 10.0, near = 10.0;
    for (int i = 0; i < 80; ++i) {
        slope = 2.0 * times(z, slope);
        z = times(z, z) + c;
        trap = min(trap, abs(z.x + 0.35 * z.y));
        near = min(near, dot(z, z));
        if (dot(z, z) > 256.0)
            break;
        count += 1.0;
    }
    float squared = max(dot(z, z), 1.001);
    float away = 0.5 * sqrt(squared / max(dot(slope, slope), 1e-12)) * log(squared);
    vec2 up = times(z, vec2(slope.x, -slope.y));
    up *= inversesqrt(max(dot(up, up), 1e-20));
    float light = clamp((dot(up, vec2(-0.64, 0.77)) + 1.1) / 2.1, 0.0, 1.0);

    float smoothed = count + 1.0 - log2(max(0.5 * log2(squared), 1.0));
    vec3 color = palette(0.035 * smoothed + 0.06 + 0.05 * sin(0.3 * time)) * (0.35 + 0.95 * light);
    color += 0.35 * kCream * pow(light, 18.0) * smoothstep(1.5, 5.0, smoothed);
    color += kCoral * 0.5 * exp(-28.0 * trap) * smoothstep(3.0, 14.0, smoothed);
    // The set itself, and what is too fine to be seen, glow.
    vec3 inside = palette(0.3 + 0.9 * sqrt(near)) + 0.25 * kCoral;
    color = mix(inside, color, smoothstep(0.0, 1.0, away / pixel));
    gl_FragColor = vec4(color, 1.0);
}

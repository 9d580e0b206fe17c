#version 120

// Day and night, water that mirrors the sun, drifting clouds, the ring's shadow, and air toward the rim.
uniform sampler2D texture0;
uniform vec3 sun, eye, axis;
uniform vec2 ring; // where it begins and ends
uniform float time;
varying vec3 world, normal;

float hashed(vec3 p) {
    p = fract(p * vec3(0.1031, 0.1030, 0.0973));
    p += dot(p, p.yzx + 33.33);
    return fract((p.x + p.y) * p.z);
}

float smoothed(vec3 p) {
    vec3 c = floor(p), f = fract(p);
    f = f * f * (3.0 - 2.0 * f);
    vec2 o = vec2(0.0, 1.0);
    vec4 low = vec4(hashed(c), hashed(c + o.yxx), hashed(c + o.xyx), hashed(c + o.yyx));
    vec4 high = vec4(hashed(c + o.xxy), hashed(c + o.yxy), hashed(c + o.xyy), hashed(c + o.yyy));
    vec4 all = mix(low, high, f.z);
    return mix(mix(all.x, all.y, f.x), mix(all.z, all.w, f.x), f.y);
}

float ringShadow() {
    float along = -dot(world, axis) / dot(sun, axis);
    vec3 hit = world + along * sun;
    float at = (length(hit) - ring.x) / (ring.y - ring.x);
    return along > 0.0 ? 0.65 * smoothstep(0.0, 0.05, at) * smoothstep(1.0, 0.95, at) * (0.6 + 0.4 * sin(31.0 * at)) : 0.0;
}

void main() {
    vec3 n = normalize(normal), toEye = normalize(eye - world);
    vec3 ground = texture2D(texture0, gl_TexCoord[0].st).rgb;
    float water = smoothstep(0.02, 0.16, ground.b - ground.r);
    vec3 q = vec3(3.0, 5.0, 3.0) * n + vec3(0.05 * time, 0.0, 0.0);
    float bend = smoothed(q + 4.0);
    float cloud = 0.6 * smoothed(q + 1.6 * bend) + 0.4 * smoothed(2.7 * q - bend + 0.04 * time);
    cloud = smoothstep(0.5, 0.78, cloud);
    float facing = dot(n, sun), day = smoothstep(-0.12, 0.5, facing);
    float mirrored = pow(max(dot(n, normalize(sun + toEye)), 0.0), 50.0);
    vec3 light = mix(vec3(1.0, 0.42, 0.18), vec3(1.0, 0.96, 0.9), smoothstep(-0.05, 0.4, facing)) * day;
    light *= 1.0 - ringShadow();
    vec3 color = ground * mix(1.25, 1.05, water) * light + water * mirrored * vec3(1.0, 0.82, 0.6) * light * 0.7;
    color = mix(color, vec3(1.0, 0.98, 0.97) * light, 0.85 * cloud);
    // Where people are awake at night.
    float towns = (1.0 - water) * smoothstep(0.55, 0.8, smoothed(70.0 * n)) * smoothstep(0.05, -0.15, facing);
    color += towns * (1.0 - cloud) * vec3(1.0, 0.62, 0.25) * 0.7 + vec3(0.008, 0.012, 0.03);
    float rim = pow(1.0 - max(dot(n, toEye), 0.0), 3.0);
    color = mix(color, vec3(0.36, 0.66, 1.0) * (day + 0.05), 0.75 * rim);
    gl_FragColor = vec4(color, 1.0);
}

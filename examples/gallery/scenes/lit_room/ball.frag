#version 120

// Glossy balls that mirror the lamp and the walls, and balls that glow. Also what stands mirrored in the
// floor, where only the colours count.
uniform vec4 balls[8];
uniform vec3 glows[3];
uniform vec3 lamp, eye, color, room, middle;
uniform float glow, gloss;
varying vec3 world, normal;

vec3 mirroredRoom(vec3 from, vec3 ray) {
    vec3 walls = (sign(ray) * room + middle - from) / ray;
    float nearest = min(walls.x, min(walls.y, walls.z));
    vec3 p = from + nearest * ray;
    vec3 wall = vec3(0.10, 0.10, 0.26);
    if (nearest == walls.x)
        wall = ray.x < 0.0 ? vec3(0.03, 0.22, 0.27) : vec3(0.40, 0.07, 0.11);
    if (nearest == walls.y)
        wall = ray.y < 0.0 ? vec3(0.35, 0.24, 0.19) : vec3(0.20, 0.20, 0.26);
    vec3 off = abs(p - lamp) - vec3(1.1, 0.2, 0.6);
    return max(off.x, max(off.y, off.z)) < 0.0 ? vec3(9.0, 7.5, 5.5) : 1.3 * wall * (0.3 + 0.3 * p.y / room.y);
}

vec3 toScreen(vec3 light) {
    light = light * (2.51 * light + 0.03) / (light * (2.43 * light + 0.59) + 0.14);
    return sqrt(clamp(light, 0.0, 1.0));
}

void main() {
    vec3 n = normalize(normal), toEye = normalize(eye - world), toLamp = lamp - world;
    float squared = dot(toLamp, toLamp);
    float light = max(dot(n, toLamp) * inversesqrt(squared), 0.0) * 15.0 / (1.5 + squared);
    vec3 sum = color * (vec3(0.10, 0.11, 0.18) * (1.0 + 0.6 * n.y) + vec3(1.0, 0.84, 0.62) * light);
    for (int i = 0; i < 3; ++i) {
        vec3 toBall = balls[i + 5].xyz - world;
        float far = dot(toBall, toBall);
        sum += color * glows[i] * (max(dot(n, toBall), 0.0) * inversesqrt(far) * 2.6 / (0.3 + far));
    }
    float clear = 1.0 - max(dot(n, toEye), 0.0);
    float fresnel = gloss * (0.08 + 0.9 * clear * clear * clear * clear);
    sum += fresnel * mirroredRoom(world, reflect(-toEye, n));
    vec3 shining = color * 1.1 + 0.9 * pow(1.0 - clear, 3.0);
    gl_FragColor = vec4(toScreen(mix(sum, shining, glow)), 1.0);
}

#version 120

// Everything in the room, lit by a lamp under the ceiling and by three glowing balls; soft shadows and
// mirrored rays are reckoned from the list of what stands there.
uniform vec4 balls[8], ballColors[8]; // centre and radius; colour and how much it glows
uniform vec3 boxes[5], boxExtents[5], boxColors[5];
uniform vec3 room, lamp, eye, color;
uniform float glow, mirrors, isRoom;
varying vec3 world, normal;

const vec3 kLampLight = vec3(1.0, 0.86, 0.66);
const vec3 kLampExtent = vec3(1.1, 0.05, 0.6);

// The room's own surfaces.
vec3 wallColor(vec3 p, vec3 n) {
    if (n.y > 0.5) {
        vec2 tile = floor(p.xz / 0.8);
        vec2 joint = abs(fract(p.xz / 0.8) - 0.5);
        float line = smoothstep(0.475, 0.49, max(joint.x, joint.y));
        vec3 wood = mix(vec3(0.26, 0.16, 0.13), vec3(0.38, 0.24, 0.17), mod(tile.x + tile.y, 2.0));
        return mix(wood, vec3(0.1, 0.06, 0.06), line);
    }
    if (n.y < -0.5)
        return vec3(0.30, 0.30, 0.42);
    vec3 wall = abs(n.x) > 0.5 ? mix(vec3(0.10, 0.28, 0.34), vec3(0.62, 0.20, 0.20), step(n.x, 0.0))
                               : vec3(0.17, 0.17, 0.36);
    float along = abs(n.x) > 0.5 ? p.z : p.x;
    float rib = smoothstep(0.46, 0.5, abs(fract(along / 1.3) - 0.5));
    return wall * (1.0 - 0.35 * rib) * (0.8 + 0.2 * smoothstep(0.0, 0.35, abs(p.y - 0.9)));
}

float shadow(vec3 p, vec3 toLight, float distance) {
    float light = 1.0;
    for (int i = 0; i < 5; ++i) {
        vec3 toBall = balls[i].xyz - p;
        float along = clamp(dot(toBall, toLight), 0.0, distance);
        float soft = 0.02 + 0.12 * along;
        light *= smoothstep(-soft, soft, length(toBall - along * toLight) - balls[i].w);
    }
    vec3 inverse = 1.0 / toLight;
    for (int i = 0; i < 5; ++i) {
        vec3 near = (boxes[i] - p) * inverse - abs(inverse) * boxExtents[i];
        vec3 far = (boxes[i] - p) * inverse + abs(inverse) * boxExtents[i];
        float enter = max(max(near.x, near.y), max(near.z, 0.02));
        float leave = min(min(far.x, far.y), min(far.z, distance));
        light *= 1.0 - smoothstep(0.0, 0.25, leave - enter);
    }
    return light;
}

// What a surface sends to the eye; `hard` leaves the shadows out.
vec3 lit(vec3 p, vec3 n, vec3 surface, vec3 toEye, float gloss, float shadows) {
    vec3 toLamp = lamp - p;
    float distance = length(toLamp);
    toLamp /= distance;
    float seen = shadows > 0.0 ? shadow(p + 0.01 * n, toLamp, distance) : 1.0;
    float strength = seen * 16.0 / (2.0 + distance * distance);
    vec3 sum = surface * (vec3(0.10, 0.11, 0.17) * (1.0 + 0.4 * n.y));
    sum += surface * kLampLight * strength * max(dot(n, toLamp), 0.0);
    float shine = pow(max(dot(n, normalize(toLamp + toEye)), 0.0), 60.0);
    sum += gloss * kLampLight * strength * shine;
    for (int i = 5; i < 8; ++i) {
        vec3 toBall = balls[i].xyz - p;
        float squared = dot(toBall, toBall);
        float fall = 2.2 / (0.35 + squared) / (1.0 + 0.05 * squared);
        sum += surface * ballColors[i].rgb * fall * max(dot(n, toBall * inversesqrt(squared)), 0.0);
    }
    return sum;
}

// What is met along a ray inside the room.
vec3 trace(vec3 from, vec3 ray) {
    vec3 inverse = 1.0 / ray;
    vec3 walls = (sign(ray) * room + vec3(0.0, room.y, 0.0) - from) * inverse;
    float nearest = min(walls.x, min(walls.y, walls.z));
    vec3 n = -sign(ray) * vec3(lessThanEqual(walls, vec3(nearest)));
    vec3 p = from + nearest * ray;
    vec3 surface = wallColor(p, n);
    float glows = 0.0;
    vec3 onLamp = abs(p - lamp);
    if (n.y < -0.5 && onLamp.x < kLampExtent.x && onLamp.z < kLampExtent.z)
        return kLampLight * 4.0;
    for (int i = 0; i < 8; ++i) {
        vec3 toBall = balls[i].xyz - from;
        float along = dot(toBall, ray);
        float inside = balls[i].w * balls[i].w - dot(toBall, toBall) + along * along;
        float t = along - sqrt(max(inside, 0.0));
        if (inside > 0.0 && t > 0.01 && t < nearest) {
            nearest = t;
            n = normalize(from + t * ray - balls[i].xyz);
            surface = ballColors[i].rgb;
            glows = ballColors[i].a;
        }
    }
    for (int i = 0; i < 5; ++i) {
        vec3 near = (boxes[i] - from) * inverse - abs(inverse) * boxExtents[i];
        vec3 far = (boxes[i] - from) * inverse + abs(inverse) * boxExtents[i];
        float t = max(near.x, max(near.y, near.z));
        if (t > 0.01 && t < min(far.x, min(far.y, far.z)) && t < nearest) {
            nearest = t;
            n = -sign(ray) * vec3(greaterThanEqual(near, vec3(t)));
            surface = boxColors[i];
            glows = 0.0;
        }
    }
    return mix(lit(from + nearest * ray, n, surface, -ray, 0.0, 0.0), 2.5 * surface, glows);
}

void main() {
    vec3 n = normalize(normal), toEye = normalize(eye - world);
    vec3 surface = isRoom > 0.5 ? wallColor(world, n) : color;
    float mirror = isRoom > 0.5 ? 0.35 * step(0.5, n.y) : mirrors;
    vec3 sum = lit(world, n, surface, toEye, 0.6 * mirrors, 1.0);
    if (mirror > 0.0) {
        float fresnel = 0.12 + 0.88 * pow(1.0 - max(dot(n, toEye), 0.0), 5.0);
        sum += mirror * fresnel * trace(world + 0.002 * n, reflect(-toEye, n));
    }
    gl_FragColor = vec4(mix(sum, 2.5 * color, glow), 1.0);
}

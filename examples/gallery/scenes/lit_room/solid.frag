#version 120
#extension GL_ARB_texture_rectangle : enable

// Boxes and the room itself, lit by a lamp under the ceiling and by three glowing balls.
uniform sampler2DRect texture0; // the lamp's light on the floor
uniform vec2 size;
uniform vec4 balls[8]; // the last three glow
uniform vec3 glows[3];
uniform vec3 lamp, eye, color, room, middle;
uniform float isRoom;
varying vec3 world, normal;

vec3 floorColor(vec2 p) {
    vec2 tile = floor(p / 0.8), joint = abs(fract(p / 0.8) - 0.5);
    float line = smoothstep(0.47, 0.49, max(joint.x, joint.y));
    vec3 wood = mix(vec3(0.13, 0.08, 0.08), vec3(0.30, 0.20, 0.16), mod(tile.x + tile.y, 2.0));
    return mix(wood, vec3(0.05, 0.03, 0.04), line);
}

vec3 wallColor(vec3 p, vec3 n) {
    vec3 wall = abs(n.x) < 0.5 ? vec3(0.10, 0.10, 0.26)
                : n.x > 0.0    ? vec3(0.03, 0.22, 0.27)
                               : vec3(0.40, 0.07, 0.11);
    float along = abs(n.x) > 0.5 ? p.z : p.x;
    float rib = smoothstep(0.45, 0.49, abs(fract(along / 1.3) - 0.5));
    return mix(wall * (1.0 - 0.45 * rib), vec3(0.5, 0.42, 0.36), 0.5 * step(p.y, 0.22));
}

vec3 toScreen(vec3 light) {
    light = light * (2.51 * light + 0.03) / (light * (2.43 * light + 0.59) + 0.14);
    return sqrt(clamp(light, 0.0, 1.0));
}

void main() {
    vec3 n = normalize(normal), toLamp = lamp - world;
    bool isFloor = isRoom * n.y > 0.5;
    vec3 surface = isFloor ? floorColor(world.xz) : isRoom > 0.5 ? wallColor(world, n) : color;
    float seen = isFloor ? texture2DRect(texture0, (0.125 * (world - middle).xz / room.xz + 0.125) * size).r : 1.0;
    float squared = dot(toLamp, toLamp), near = inversesqrt(squared);
    float facing = max(dot(n, toLamp), 0.0) * near * (0.25 + 0.75 * max(toLamp.y * near, 0.0));
    float light = seen * facing * 15.0 / (1.5 + squared);
    vec3 sum = surface * (vec3(0.07, 0.08, 0.14) * (1.0 + 0.5 * n.y) + vec3(1.0, 0.84, 0.62) * light);
    for (int i = 0; i < 3; ++i) {
        vec3 toBall = balls[i + 5].xyz - world;
        float far = dot(toBall, toBall);
        sum += (surface + 0.02) * glows[i] * (max(dot(n, toBall), 0.0) * inversesqrt(far) * 2.6 / (0.3 + far));
    }
    // What keeps the lamp off keeps some of all other light off.
    sum *= 0.3 + 0.7 * seen;
    // The floor is varnished: what is mirrored in it has been drawn before.
    float clear = 1.0 - max(dot(n, normalize(eye - world)), 0.0);
    gl_FragColor = vec4(toScreen(sum), isFloor ? 0.9 - 0.75 * clear * clear * clear : 1.0);
}

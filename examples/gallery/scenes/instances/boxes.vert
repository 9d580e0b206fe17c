#version 120
#extension GL_ARB_draw_instanced : enable

// Each box finds its place by its instance, which is a row, and its number in it; it rises and falls with the
// waves that cross there.
attribute vec3 corner, side;
attribute vec2 number;
uniform float time;
uniform vec2 stone; // where a stone has fallen, in boxes from the middle
uniform vec3 eye, haze;

const vec3 kDeep = vec3(0.03, 0.07, 0.24), kWater = vec3(0.01, 0.36, 0.50), kRose = vec3(0.92, 0.20, 0.30),
           kFoam = vec3(1.0, 0.76, 0.42);

float wave(vec2 at) {
    float far = length(at - stone);
    return 2.6 * sin(0.32 * far - 2.1 * time) * exp(-0.028 * far) + 1.2 * sin(0.09 * at.x + 0.07 * at.y + 0.6 * time) +
           0.7 * cos(0.17 * (at.x - at.y) + 0.9 * time);
}

void main() {
    vec2 at = vec2(number.x, gl_InstanceIDARB) - 49.5;
    // Of its sides it has only those that can be seen.
    vec3 flip = vec3(eye.x < at.x ? -1.0 : 1.0, 1.0, eye.z < at.y ? -1.0 : 1.0);
    float height = wave(at), up = clamp(0.5 + 0.15 * height, 0.0, 1.0);
    vec3 world = vec3(at.x, height, at.y) + vec3(0.45, 4.0, 0.45) * flip * (corner - vec3(0.0, 1.0, 0.0));
    vec3 color = mix(kDeep, kWater, smoothstep(0.0, 0.5, up));
    color = mix(color, kRose, smoothstep(0.5, 0.75, up));
    color = mix(color, kFoam, smoothstep(0.7, 1.0, up));
    // The sides are darker towards their feet; far away they could not be told from the tops.
    float far = length(eye - world);
    color *= mix(side.y > 0.5 ? 1.0 : 0.45 + 0.25 * corner.y, 0.8, smoothstep(45.0, 100.0, far));
    float sun = max(dot(side * flip, vec3(-0.35, 0.75, -0.56)), 0.0);
    color *= vec3(1.2, 0.98, 0.78) * sun + vec3(0.30, 0.36, 0.58) * (0.5 + 0.5 * side.y);
    float fog = max(1.0 - exp(-0.00009 * far * far) - 0.15, 0.0);
    gl_FrontColor = vec4(mix(sqrt(color), haze, fog), 1.0);
    gl_Position = gl_ModelViewProjectionMatrix * vec4(world, 1.0);
}

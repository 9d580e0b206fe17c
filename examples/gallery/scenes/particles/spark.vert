#version 120

// Each particle is six numbers between 0 and 1; where it is follows from them and the time. Most go around a
// ring, the others rise in its middle and fall.
uniform float time;
uniform vec2 wind;
varying vec4 tail; // where it was a moment ago
varying vec3 tint;
varying float breadth;

const float kTurn = 6.2831853;
const float kRing = 0.62;

vec3 onRing(vec3 a, vec3 b, float t) {
    float around = kTurn * a.x + (0.18 + 0.30 * b.y) * t, within = kTurn * a.y + (1.4 - b.x) * t;
    float tube = 0.08 + 0.42 * sqrt(b.x) * (0.75 + 0.25 * sin(3.0 * around + 0.7 * t));
    float radius = 1.75 + tube * cos(within);
    return vec3(radius * cos(around), tube * sin(within) + 0.1 * sin(2.0 * around - 0.8 * t), radius * sin(around));
}

vec3 inFountain(vec3 a, vec3 b, float t) {
    float age = 1.9 * fract(a.x + 0.42 * t), around = kTurn * a.y + 1.3 * age + 0.4 * t;
    float away = (0.12 + 0.55 * b.x) * age;
    return vec3(away * cos(around) + wind.x * age * age, (2.6 + 0.8 * b.y) * age - 1.55 * age * age - 0.35,
                away * sin(around) + wind.y * age * age);
}

void main() {
    vec3 a = gl_Vertex.xyz, b = gl_Normal;
    bool isRing = a.z < kRing;
    vec3 now = isRing ? onRing(a, b, time) : inFountain(a, b, time);
    vec3 before = isRing ? onRing(a, b, time - 0.09) : inFountain(a, b, time - 0.03);
    float age = fract(a.x + 0.42 * time);
    if (age < 0.03 && !isRing)
        before = now;
    float glow = isRing ? 0.5 + 1.1 * pow(0.5 + 0.5 * sin(kTurn * b.z + 2.0 * time), 4.0)
                        : 0.6 * smoothstep(1.0, 0.6, age) * (0.25 + smoothstep(0.0, 0.3, age));
    vec3 cold = mix(vec3(0.08, 0.32, 1.0), vec3(1.0, 0.14, 0.60), b.x);
    vec3 warm = mix(vec3(1.0, 0.80, 0.42), vec3(0.95, 0.22, 0.12), smoothstep(0.1, 0.85, age));
    tint = (isRing ? mix(cold, vec3(0.10, 0.80, 0.85), 0.7 * b.y * b.y) : warm) * glow;
    breadth = gl_ProjectionMatrix[1][1] * (isRing ? 0.005 + 0.013 * b.z * b.z : 0.006 + 0.007 * b.z);
    tail = gl_ModelViewProjectionMatrix * vec4(before, 1.0);
    gl_Position = gl_ModelViewProjectionMatrix * vec4(now, 1.0);
}

#version 120

uniform float time;
uniform vec2 mouse, size;

const float kPi = 3.14159265;

// A Julia set of two numbers, c wandering: smooth colours by how fast a point escapes.
void main() {
    vec2 z = (gl_TexCoord[0].st - 0.5 * size) / min(size.x, size.y) * 2.6;
    float turn = 0.2 * time + 6.0 * (mouse.x - 0.5);
    vec2 c = 0.7885 * vec2(cos(turn), sin(turn));
    float n = 0.0;
    for (int i = 0; i < 64; ++i) {
        z = vec2(z.x * z.x - z.y * z.y, 2.0 * z.x * z.y) + c;
        if (dot(z, z) > 64.0)
            break;
        n += 1.0;
    }
    float smoothed = n - log2(log2(max(dot(z, z), 4.0)));
    vec3 color = 0.5 + 0.5 * cos(2.0 * kPi * (0.02 * smoothed + vec3(0.55, 0.45, 0.35)));
    gl_FragColor = vec4(color * smoothstep(64.0, 40.0, n), 1.0);
}

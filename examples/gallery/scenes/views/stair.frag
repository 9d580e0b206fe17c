#version 120

// A sun, a blue sky's light, and less of both toward the stair's axis and the ground.
uniform vec3 color, eye, ground;
varying vec3 world, normal;

void main() {
    vec3 n = normalize(normal), sun = normalize(vec3(0.55, 0.75, 0.4));
    float facing = max(dot(n, sun), 0.0);
    float near = 0.55 + 0.45 * smoothstep(0.1, 1.0, length(world.xz));
    vec3 sky = mix(vec3(0.30, 0.24, 0.34), vec3(0.44, 0.50, 0.62), 0.5 + 0.5 * n.y);
    float mirrored = pow(max(dot(reflect(-sun, n), normalize(eye - world)), 0.0), 24.0);
    vec3 sum = color * (sky * near + vec3(0.86, 0.74, 0.60) * facing) + 0.2 * mirrored;
    gl_FragColor = vec4(mix(ground, sum, smoothstep(-1.6, -0.6, world.y)), 1.0);
}

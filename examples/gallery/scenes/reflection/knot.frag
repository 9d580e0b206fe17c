#version 120

// Polished metal: its colour is that of what it mirrors, and toward its rim that alone.
uniform samplerCube texture0;
uniform vec3 eye, metal;
varying vec3 world, normal;

void main() {
    vec3 n = normalize(normal), fromEye = normalize(world - eye);
    float clear = 1.0 - abs(dot(n, fromEye));
    vec3 tint = mix(metal, vec3(1.0), clear * clear * clear);
    vec4 seen = textureCube(texture0, reflect(fromEye, n));
    // Dark parts are lifted; what shines brighter than white is told by the picture's alpha.
    vec3 light = mix(seen.rgb, sqrt(seen.rgb), 0.65) * (1.1 + 4.0 * max(0.98 - seen.a, 0.0));
    // Where the tube bends inward it stands in its own way.
    float open = smoothstep(0.1, 0.85, length(world) + 0.25 * dot(n, normalize(world)));
    gl_FragColor = vec4(light * tint * mix(0.35, 1.0, open), 1.0);
}

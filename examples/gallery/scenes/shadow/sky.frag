#version 120

uniform vec3 sky;
uniform float horizon;
varying float up;

void main() {
    vec3 high = vec3(0.30, 0.42, 0.62);
    gl_FragColor = vec4(mix(sky, high, smoothstep(0.0, 1.6, up - horizon)), 1.0);
}

#version 120

varying vec3 color;
varying vec2 spot;

void main() {
    float near = max(1.0 - dot(spot, spot), 0.0);
    gl_FragColor = vec4(color * (0.7 * near * near + 1.1 * pow(near, 12.0)), 1.0);
}

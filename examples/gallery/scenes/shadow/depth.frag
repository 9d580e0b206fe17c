#version 120

// The depth alone counts.
void main() {
    gl_FragColor = vec4(1.0);
}

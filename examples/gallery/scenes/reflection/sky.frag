#version 120

uniform samplerCube texture0;
varying vec3 ray;

void main() {
    gl_FragColor = vec4(textureCube(texture0, ray).rgb, 1.0);
}

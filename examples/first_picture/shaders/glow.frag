#version 120
#extension GL_ARB_texture_rectangle : enable

// The bright parts of the scene, blurred along x. Samples lie between two pixels, so that each takes in both.
uniform sampler2DRect scene;
uniform float threshold;

vec3 bright(float offset) {
    return max(texture2DRect(scene, gl_TexCoord[0].st + vec2(offset, 0.0)).rgb - threshold, 0.0);
}

void main() {
    vec3 sum = 0.4 * bright(0.0);
    sum += 0.2 * (bright(-3.5) + bright(3.5));
    sum += 0.1 * (bright(-9.5) + bright(9.5));
    gl_FragColor = vec4(sum, 1.0);
}

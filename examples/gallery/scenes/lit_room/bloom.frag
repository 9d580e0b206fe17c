#version 120
#extension GL_ARB_texture_rectangle : enable

// The blurred bright parts shine over the picture.
uniform sampler2DRect texture0, texture1;
uniform vec2 size;
uniform float strength;

void main() {
    vec2 last = floor(0.25 * size) - 0.5;
    vec3 halo = texture2DRect(texture1, min(0.25 * gl_TexCoord[0].st, last)).rgb;
    vec3 color = texture2DRect(texture0, gl_TexCoord[0].st).rgb;
    gl_FragColor = vec4(1.0 - (1.0 - color) * (1.0 - min(strength * halo, 1.0)), 1.0);
}

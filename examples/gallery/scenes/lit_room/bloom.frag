#version 120
#extension GL_ARB_texture_rectangle : enable

// The bright parts, blurred along y as well, shine over the picture.
uniform sampler2DRect texture0, texture1;
uniform vec2 size;
uniform float strength;

void main() {
    vec2 place = gl_TexCoord[0].st, last = 0.25 * size - 1.0;
    vec3 halo = vec3(0.0);
    float weights = 0.0;
    for (int i = -7; i <= 7; ++i) {
        float weight = exp(-float(i * i) / 18.0);
        halo += weight * texture2DRect(texture1, clamp(0.25 * place + vec2(0.0, float(i)), vec2(0.5), last)).rgb;
        weights += weight;
    }
    gl_FragColor = vec4(texture2DRect(texture0, place).rgb + strength * halo / weights, 1.0);
}

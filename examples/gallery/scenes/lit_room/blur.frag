#version 120
#extension GL_ARB_texture_rectangle : enable

// Along one direction, over the quarter of the texture that is in use.
uniform sampler2DRect texture0;
uniform vec2 size, along;

void main() {
    vec2 place = 0.25 * gl_TexCoord[0].st, last = floor(0.25 * size) - 0.5;
    vec3 sum = vec3(0.0);
    float weights = 0.0;
    for (int i = -6; i <= 6; ++i) {
        float weight = exp(-float(i * i) / 14.0);
        sum += weight * texture2DRect(texture0, clamp(place + float(i) * along, vec2(0.5), last)).rgb;
        weights += weight;
    }
    gl_FragColor = vec4(sum / weights, 1.0);
}

#version 120
#extension GL_ARB_texture_rectangle : enable

// The bright parts, a quarter as large, blurred along x.
uniform sampler2DRect texture0;

vec3 brightAt(vec2 place) {
    vec3 color = 0.5 * (texture2DRect(texture0, place - 1.0).rgb + texture2DRect(texture0, place + 1.0).rgb);
    return min(max(color - 0.75, 0.0), 4.0);
}

void main() {
    vec3 sum = vec3(0.0);
    float weights = 0.0;
    for (int i = -7; i <= 7; ++i) {
        float weight = exp(-float(i * i) / 18.0);
        sum += weight * brightAt(gl_TexCoord[0].st + vec2(float(4 * i), 0.0));
        weights += weight;
    }
    gl_FragColor = vec4(sum / weights, 1.0);
}

#version 120
#extension GL_ARB_texture_rectangle : enable

// The bright parts, a quarter as large.
uniform sampler2DRect texture0;

vec3 brightAt(vec2 place) {
    vec3 color = texture2DRect(texture0, place).rgb;
    return max(color - 0.62, 0.0) * max(color.r, max(color.g, color.b));
}

void main() {
    vec2 place = gl_TexCoord[0].st;
    vec3 sum = brightAt(place + vec2(-1.0, -1.0)) + brightAt(place + vec2(1.0, -1.0));
    sum += brightAt(place + vec2(-1.0, 1.0)) + brightAt(place + vec2(1.0, 1.0));
    gl_FragColor = vec4(0.6 * sum, 1.0);
}

#version 120
#extension GL_ARB_texture_rectangle : enable

// From light to the screen's colours, with darker corners.
uniform sampler2DRect texture0;
uniform vec2 size;

void main() {
    vec2 fromMiddle = gl_TexCoord[0].st / size - 0.5;
    vec3 color = texture2DRect(texture0, gl_TexCoord[0].st).rgb * (1.0 - 0.6 * dot(fromMiddle, fromMiddle));
    color = color * (2.51 * color + 0.03) / (color * (2.43 * color + 0.59) + 0.14);
    gl_FragColor = vec4(pow(clamp(color, 0.0, 1.0), vec3(1.0 / 2.2)), 1.0);
}

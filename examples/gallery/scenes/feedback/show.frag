#version 120
#extension GL_ARB_texture_rectangle : enable

// Light beyond what the screen can show turns white gently; behind it there is a night sky.
uniform sampler2DRect texture0;
uniform vec2 size;

void main() {
    vec2 fromMiddle = (gl_TexCoord[0].st - 0.5 * size) / max(size.x, size.y);
    vec3 sky = mix(vec3(0.07, 0.05, 0.16), vec3(0.01, 0.015, 0.05), 2.0 * length(fromMiddle));
    vec3 light = texture2DRect(texture0, gl_TexCoord[0].st).rgb + sky;
    gl_FragColor = vec4(sqrt(1.0 - exp(-2.4 * light * light - 0.6 * light)), 1.0);
}

#version 120
#extension GL_ARB_texture_rectangle : enable

uniform sampler2DRect scene;
uniform float strength;

void main() {
    vec3 color = texture2DRect(scene, gl_TexCoord[0].st).rgb;
    float gray = dot(color, vec3(0.3, 0.59, 0.11));
    gl_FragColor = vec4(mix(color, gray * vec3(1.35, 1.0, 0.6), strength), 1.0);
}

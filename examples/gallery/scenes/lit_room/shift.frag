#version 120
#extension GL_ARB_texture_rectangle : enable

// The colours part towards the edges, and turn around the gray axis.
uniform sampler2DRect texture0;
uniform vec2 size;
uniform float turn;

void main() {
    vec2 fromMiddle = gl_TexCoord[0].st - 0.5 * size;
    vec2 apart = fromMiddle * length(fromMiddle / size) * 0.018;
    vec3 color = vec3(texture2DRect(texture0, gl_TexCoord[0].st - apart).r,
                      texture2DRect(texture0, gl_TexCoord[0].st).g,
                      texture2DRect(texture0, gl_TexCoord[0].st + apart).b);
    vec3 gray = vec3(0.57735);
    color = mix(gray * dot(gray, color), color, cos(turn)) + cross(gray, color) * sin(turn);
    gl_FragColor = vec4(max(color, 0.0), 1.0);
}

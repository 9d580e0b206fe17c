#version 120
#extension GL_ARB_texture_rectangle : enable

uniform sampler2DRect texture0;

void main() {
    gl_FragColor = texture2DRect(texture0, gl_TexCoord[0].st);
}

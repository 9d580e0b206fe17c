// Gives every input of the geometry shaders a value of its own.
#version 120
varying vec4 tint;
varying vec2 size;
void main() {
    gl_Position = gl_ClipVertex = gl_Vertex;
    tint = gl_FrontColor = gl_Color;
    gl_BackColor = vec4(1.0) - gl_Color + vec4(0, 0, 0, 1);
    gl_FrontSecondaryColor = gl_Color.gbra;
    gl_BackSecondaryColor = vec4(1.0) - gl_Color.gbra;
    gl_FogFragCoord = gl_Vertex.x;
    gl_PointSize = gl_Vertex.y;
    gl_TexCoord[0] = gl_Color;
    gl_TexCoord[1] = gl_Color.brga;
    gl_TexCoord[2] = gl_BackColor;
    size = vec2(4.0);
}

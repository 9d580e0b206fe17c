// 1.50 without a layout gets that of the parameters.
#version 150 compatibility
#ifdef GL_ARB_gpu_shader5
#extension GL_ARB_gpu_shader5 : require
#endif
in vec4 tint[];
out vec4 shade;

void main() {
    for (int i = 0; i < gl_in.length(); ++i) {
        gl_Position = gl_ModelViewProjectionMatrix * gl_in[i].gl_Position.yxzw;
        shade = tint[i];
        EmitVertex();
    }
}

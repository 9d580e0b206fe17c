#version 120
#extension GL_ARB_texture_rectangle : enable

// The frame before, a little larger, turned and stirred, and fading from warm to cold.
uniform sampler2DRect texture0;
uniform vec2 size;
uniform float time, pull, twist;

void main() {
    float unit = 0.5 * min(size.x, size.y);
    vec2 place = (gl_TexCoord[0].st - 0.5 * size) / unit;
    vec2 from = place * (1.0 - pull);
    from += 0.0035 * vec2(sin(3.1 * place.y + 0.7 * time), sin(2.7 * place.x - 0.9 * time));
    float c = cos(twist), s = sin(twist);
    from = vec2(c * from.x - s * from.y, s * from.x + c * from.y);
    vec3 color = texture2DRect(texture0, from * unit + 0.5 * size).rgb;
    color *= vec3(0.970, 0.976, 0.982);
    color += 0.006 * vec3(color.b, color.r, color.g);
    gl_FragColor = vec4(max(color - 0.0006, 0.0), 1.0);
}

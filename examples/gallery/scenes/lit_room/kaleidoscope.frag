#version 120
#extension GL_ARB_texture_rectangle : enable

// One slice of the picture, mirrored around the middle.
uniform sampler2DRect texture0;
uniform vec2 size;
uniform float slices, turn;

void main() {
    vec2 place = gl_TexCoord[0].st - 0.5 * size;
    float slice = 3.14159265 / slices;
    float angle = abs(mod(atan(place.y, place.x) + turn, 2.0 * slice) - slice) - turn;
    vec2 from = 0.5 * size + length(place) * vec2(cos(angle), sin(angle));
    vec2 folded = abs(mod(from - 0.5, 2.0 * (size - 1.0)) - (size - 1.0));
    gl_FragColor = vec4(texture2DRect(texture0, size - 0.5 - folded).rgb, 1.0);
}

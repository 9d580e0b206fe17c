#version 120
#extension GL_ARB_texture_rectangle : enable

// Edges, found by how bright the neighbours are, are blurred along their direction.
uniform sampler2DRect texture0;

vec3 at(vec2 place) {
    return texture2DRect(texture0, place).rgb;
}

float bright(vec3 color) {
    return dot(color, vec3(0.3, 0.59, 0.11));
}

void main() {
    vec2 place = gl_TexCoord[0].st;
    float nw = bright(at(place + vec2(-1.0, 1.0))), ne = bright(at(place + vec2(1.0, 1.0)));
    float sw = bright(at(place + vec2(-1.0, -1.0))), se = bright(at(place + vec2(1.0, -1.0)));
    vec2 edge = vec2(sw + se - nw - ne, nw + sw - ne - se);
    float weak = max((nw + ne + sw + se) * 0.03, 0.008);
    edge = clamp(edge / (min(abs(edge.x), abs(edge.y)) + weak), -3.0, 3.0);
    gl_FragColor = vec4(0.5 * (at(place - 0.3 * edge) + at(place + 0.3 * edge)), 1.0);
}

#version 120
#extension GL_ARB_texture_rectangle : enable

// Edges, found by how bright the neighbours are, are blurred along their direction.
uniform sampler2DRect texture0;

vec3 at(vec2 place) {
    return texture2DRect(texture0, place).rgb;
}

float bright(vec3 color) {
    float sum = dot(color, vec3(0.3, 0.59, 0.11));
    return sum / (1.0 + sum);
}

void main() {
    vec2 place = gl_TexCoord[0].st;
    vec3 center = at(place);
    float m = bright(center);
    float nw = bright(at(place + vec2(-1.0, 1.0))), ne = bright(at(place + vec2(1.0, 1.0)));
    float sw = bright(at(place + vec2(-1.0, -1.0))), se = bright(at(place + vec2(1.0, -1.0)));
    float low = min(m, min(min(nw, ne), min(sw, se))), high = max(m, max(max(nw, ne), max(sw, se)));
    if (high - low < max(0.02, 0.1 * high)) {
        gl_FragColor = vec4(center, 1.0);
        return;
    }
    vec2 edge = vec2(sw + se - nw - ne, nw + sw - ne - se);
    float weak = max((nw + ne + sw + se) * 0.03, 0.008);
    edge = clamp(edge / (min(abs(edge.x), abs(edge.y)) + weak), -8.0, 8.0);
    vec3 close = 0.5 * (at(place - edge / 6.0) + at(place + edge / 6.0));
    vec3 wide = 0.5 * close + 0.25 * (at(place - 0.5 * edge) + at(place + 0.5 * edge));
    float b = bright(wide);
    gl_FragColor = vec4(b < low || b > high ? close : wide, 1.0);
}

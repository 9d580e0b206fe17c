#version 120

// The same drawing twice, one sample a pixel at the left and several at the right, each with a glass that
// enlarges a part of it.
uniform sampler2D texture0, texture1;
uniform vec2 size, glass, spot; // of the right glass, and what it shows, in pixels from the middle
uniform float radius, zoom;

float ring(float far, float at, float wide) {
    return smoothstep(0.5 * wide + 0.7, 0.5 * wide - 0.7, abs(far - at));
}

float toLine(vec2 p, vec2 a, vec2 b) {
    vec2 along = b - a;
    return length(p - a - along * clamp(dot(p - a, along) / dot(along, along), 0.0, 1.0));
}

void main() {
    vec2 fromMiddle = gl_TexCoord[0].st - 0.5 * size;
    float side = fromMiddle.x < 0.0 ? -1.0 : 1.0;
    vec2 at = vec2(abs(fromMiddle.x), fromMiddle.y);
    float far = length(at - glass), line = max(1.0, floor(min(size.x, size.y) / 270.0));
    vec2 place = far < radius ? spot + (at - glass) / zoom : at;
    // Whole pixels, so that each is a square in the glass.
    place = (floor(vec2(side * place.x, place.y) + 0.5 * size) + 0.5) / size;
    vec3 color = side < 0.0 ? texture2D(texture0, place).rgb : texture2D(texture1, place).rgb;
    vec3 ink = vec3(0.98, 0.93, 0.84);
    if (far > radius) {
        color *= 1.0 - 0.5 * smoothstep(1.2, 1.0, far / radius);
        vec2 toSpot = normalize(spot - glass);
        float thread = toLine(at, glass + radius * toSpot, spot - radius / zoom * toSpot);
        color = mix(color, ink, max(ring(length(at - spot), radius / zoom, 1.5 * line), ring(thread, 0.0, line)));
    }
    color = mix(color, ink, ring(far, radius, 2.5 * line));
    color = mix(color, ink, step(at.x, 0.5 * line));
    gl_FragColor = vec4(color, 1.0);
}

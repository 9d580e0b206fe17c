#version 120

// How much of the lamp is seen from the floor past what stands on it, for the whole floor in a small texture.
uniform vec4 balls[5]; // centre and radius
uniform vec3 boxes[5], boxExtents[5];
uniform vec3 lamp, room, middle;
uniform vec2 size;

void main() {
    vec2 place = 2.0 * gl_TexCoord[0].st / size - 1.0;
    vec3 p = vec3(place.x * room.x, 0.01, middle.z + place.y * room.z);
    vec3 toLamp = lamp - p;
    float distance = length(toLamp), light = 1.0;
    toLamp /= distance;
    for (int i = 0; i < 5; ++i) {
        vec3 toBall = balls[i].xyz - p;
        float along = clamp(dot(toBall, toLamp), 0.0, distance);
        float past = length(toBall - along * toLamp) - balls[i].w;
        light *= clamp(0.5 + past / (0.1 + 0.3 * along), 0.0, 1.0);
    }
    vec3 inverse = 1.0 / toLamp;
    for (int i = 0; i < 5; ++i) {
        vec3 middle = (boxes[i] - p) * inverse, reach = abs(inverse) * boxExtents[i];
        vec3 near = middle - reach, far = middle + reach;
        float enter = max(max(near.x, near.y), max(near.z, 0.0));
        float leave = min(min(far.x, far.y), min(far.z, distance));
        light *= 1.0 - clamp((leave - enter) * 2.5, 0.0, 1.0);
        // Where a box stands little light comes from the sides either.
        vec2 beside = max(abs(p.xz - boxes[i].xz) - boxExtents[i].xz, 0.0);
        light *= 1.0 - 0.6 * exp(-7.0 * length(beside));
    }
    gl_FragColor = vec4(light);
}

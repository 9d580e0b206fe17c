#version 120
#extension GL_ARB_texture_rectangle : enable

// The scene over a soft backdrop, with its glow blurred along y.
uniform sampler2DRect scene;
uniform sampler2DRect glow;
uniform vec2 size;

vec3 glowAt(float offset) {
    return texture2DRect(glow, gl_TexCoord[0].st + vec2(0.0, offset)).rgb;
}

void main() {
    vec3 halo = 0.4 * glowAt(0.0);
    halo += 0.2 * (glowAt(-3.5) + glowAt(3.5));
    halo += 0.1 * (glowAt(-9.5) + glowAt(9.5));

    vec2 place = gl_TexCoord[0].st / size;
    vec2 centered = place - 0.5;
    float vignette = 1.0 - dot(centered, centered);
    vec3 backdrop = mix(vec3(0.07, 0.09, 0.14), vec3(0.22, 0.28, 0.40), place.y);
    vec4 color = texture2DRect(scene, gl_TexCoord[0].st);
    gl_FragColor = vec4((mix(backdrop, color.rgb, color.a) + 1.4 * halo) * vignette, 1.0);
}

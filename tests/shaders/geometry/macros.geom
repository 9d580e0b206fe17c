#version 110
#extension GL_EXT_geometry_shader4 : enable

#define P gl_PositionIn
#define COLOR(i) gl_FrontColorIn[i]
#define AT(array, i) array[i]
#define INPUT varying in
#define VARYING varying
#define LAST \
    (gl_VerticesIn - 1)

INPUT vec4 tint[];
VARYING out vec4 nobodyReadsThis;
uniform int two;

vec4 middle(vec4 points[gl_VerticesIn]) {
    return (points[0] + points[LAST]) / 2.0;
}

void emit(vec4 place, vec4 color) {
    gl_Position = gl_ModelViewProjectionMatrix * place;
    gl_FrontColor = color;
    EmitVertex();
}

// From a line to two bars: its left half in the color of its begin, its right half in that of its end.
void main() {
    vec4 up = vec4(0.0, 3.0, 0.0, 0.0);
    emit(P[0], COLOR(0));
    emit(P[0] + up, AT(tint, 0));
    emit(middle(P), COLOR(0));
    emit(middle(gl_PositionIn) + up, COLOR(0));
    EndPrimitive();
    emit(middle(P), COLOR(LAST));
    emit(middle(P) + up, COLOR(1));
    emit(AT(P, LAST), COLOR(1));
    emit(AT(gl_PositionIn, 1) + up, AT(tint, two - 1));
    EndPrimitive();
}

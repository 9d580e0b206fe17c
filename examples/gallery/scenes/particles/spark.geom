#version 120
#extension GL_EXT_geometry_shader4 : enable

// A point becomes a streak from where it was to where it is.
uniform float aspect;
varying in vec4 tail[];
varying in vec3 tint[];
varying in float breadth[];
varying out vec3 color;
varying out vec2 spot; // from -1 to 1 along and across

void corner(vec4 place, vec2 offset, vec2 at) {
    gl_Position = place + vec4(offset.x / aspect, offset.y, 0.0, 0.0);
    color = tint[0];
    spot = at;
    EmitVertex();
}

void main() {
    vec4 head = gl_PositionIn[0], end = tail[0];
    vec2 way = (head.xy / head.w - end.xy / end.w) * vec2(aspect, 1.0);
    vec2 along = dot(way, way) > 1e-10 ? normalize(way) : vec2(1.0, 0.0);
    vec2 ahead = 2.4 * breadth[0] * along, across = 2.4 * breadth[0] * vec2(-along.y, along.x);
    corner(end, across - ahead, vec2(-1.0, 1.0));
    corner(end, -across - ahead, vec2(-1.0, -1.0));
    corner(head, across + ahead, vec2(1.0, 1.0));
    corner(head, ahead - across, vec2(1.0, -1.0));
    EndPrimitive();
}

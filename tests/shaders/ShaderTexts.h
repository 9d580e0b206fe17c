// SPDX-License-Identifier: MIT
#pragma once

namespace vx::test {

inline constexpr const char* kVertex = R"(
attribute vec3 tangent;
void main() {
    gl_Position = ftransform();
    gl_TexCoord[0] = gl_MultiTexCoord0;
    gl_FrontColor = vec4(tangent, 1.0);
})";

/// These two do not link.
inline constexpr const char* kVaryingOfTwo =
    "varying vec2 v; void main() { v = vec2(0); gl_Position = gl_Vertex; }";
inline constexpr const char* kVaryingOfFour = "varying vec4 v; void main() { gl_FragColor = v; }";

/// Makes a green square over the whole window of each point.
inline constexpr const char* kGeometry = R"(#version 150 compatibility
layout(points) in;
layout(triangle_strip, max_vertices = 4) out;
void main() {
    for (int corner = 0; corner < 4; ++corner) {
        gl_Position = vec4(corner % 2 * 2 - 1, corner / 2 * 2 - 1, 0, 1);
        gl_FrontColor = vec4(0, 1, 0, 1);
        EmitVertex();
    }
})";

} // namespace vx::test

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLVertex.h>

#include <cstring>

namespace vx {

/// Where the attributes of one vertex format stand, in bytes; `none` where the format has no such attribute.
struct VertexLayout {
    static constexpr int none = -1;

    int format;
    int stride;
    int diffuse;
    int normal;
    int uv;
    int tangent;
};

/// The layout of `format`, or null for a code that does not exist.
const VertexLayout* vertexLayout(int format);

/// Writes those of the four attributes that the layout has and returns the next vertex. A tangent is left as
/// it was.
inline void* writeVertex(const VertexLayout& layout, void* vertex, const glm::tvec3<float>& position,
                         const glm::tvec4<float>& diffuse, const glm::tvec3<float>& normal,
                         const glm::tvec2<float>& uv) {
    auto* bytes = static_cast<char*>(vertex);
    std::memcpy(bytes, &position, sizeof position);
    if (layout.diffuse != VertexLayout::none)
        std::memcpy(bytes + layout.diffuse, &diffuse, sizeof diffuse);
    if (layout.normal != VertexLayout::none)
        std::memcpy(bytes + layout.normal, &normal, sizeof normal);
    if (layout.uv != VertexLayout::none)
        std::memcpy(bytes + layout.uv, &uv, sizeof uv);
    return bytes + layout.stride;
}

} // namespace vx

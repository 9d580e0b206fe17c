// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLVertex.h>

#include <cstring>

namespace vx {

/// Where the attributes of one vertex format stand, in bytes; `kNone` where the format has no such attribute.
struct VertexLayout {
    static constexpr int kNone = -1;

    int format;
    int stride;
    int diffuse = kNone;
    int normal = kNone;
    int uv = kNone;
    int tangent = kNone;
};

inline constexpr VertexLayout kVertexLayouts[] = {
    {VX_GLVertexP, 12},
    {VX_GLVertexPN, 24, VertexLayout::kNone, 12},
    {VX_GLVertexPT, 20, VertexLayout::kNone, VertexLayout::kNone, 12},
    {VX_GLVertexPNT, 32, VertexLayout::kNone, 12, 24},
    {VX_GLVertexPD, 28, 12},
    {VX_GLVertexPDN, 40, 12, 28},
    {VX_GLVertexPDT, 36, 12, VertexLayout::kNone, 28},
    {VX_GLVertexPDNT, 48, 12, 28, 40},
    {VX_GLVertexPNB, 36, VertexLayout::kNone, 12, VertexLayout::kNone, 24},
};

/// The layout of `format`, or null for a code that does not exist.
constexpr const VertexLayout* vertexLayout(int format) {
    // All but the last are the odd numbers in order.
    if (format == VX_GLVertexPNB)
        return &kVertexLayouts[8];
    return format > 0 && format <= VX_GLVertexPDNT && format % 2 ? &kVertexLayouts[format / 2] : nullptr;
}

/// Writes those of the four attributes that the layout has and returns the next vertex. A tangent is left as
/// it was.
inline void* writeVertex(const VertexLayout& layout, void* vertex, const glm::tvec3<float>& position,
                         const glm::tvec4<float>& diffuse, const glm::tvec3<float>& normal,
                         const glm::tvec2<float>& uv) {
    auto* bytes = static_cast<char*>(vertex);
    std::memcpy(bytes, &position, sizeof position);
    if (layout.diffuse != VertexLayout::kNone)
        std::memcpy(bytes + layout.diffuse, &diffuse, sizeof diffuse);
    if (layout.normal != VertexLayout::kNone)
        std::memcpy(bytes + layout.normal, &normal, sizeof normal);
    if (layout.uv != VertexLayout::kNone)
        std::memcpy(bytes + layout.uv, &uv, sizeof uv);
    return bytes + layout.stride;
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLVertex.h>

#include <VX_OpenGL64/meshes/private/VertexLayout.h>

#include <cstdint>
#include <cstdlib>
#include <limits>

namespace {

using vx::VertexLayout;

template <class Value>
Value* attribute(int format, void* vertex, int VertexLayout::*offset) {
    const VertexLayout* layout = vx::vertexLayout(format);
    if (!layout || layout->*offset == VertexLayout::kNone)
        return nullptr;
    return reinterpret_cast<Value*>(static_cast<char*>(vertex) + layout->*offset);
}

template <class Value>
void* store(int format, void* vertex, int VertexLayout::*offset, const Value& value) {
    auto* place = attribute<Value>(format, vertex, offset);
    if (!place)
        return vertex;
    *place = value;
    return static_cast<char*>(vertex) + vx::vertexLayout(format)->stride;
}

} // namespace

VX_GLVertex::VX_GLVertex() = default;

VX_GLVertex::VX_GLVertex(VX_GLVertex* source) {
    if (source && Allocate(source->m_Format, source->m_Count))
        std::memcpy(m_Data, source->m_Data, static_cast<std::size_t>(m_Stride) * m_Count);
}

VX_GLVertex::~VX_GLVertex() {
    std::free(m_Data);
}

void* VX_GLVertex::Allocate(int format, int count) {
    if (m_Data && m_Format == format && m_Count >= count)
        return m_Data;
    clear();
    m_Stride = 0;
    const VertexLayout* layout = vx::vertexLayout(format);
    if (!layout)
        return nullptr;
    m_Stride = layout->stride;
    // A size is 32 bits with a sign; one that does not fit is taken for a heap that cannot give it, and never
    // for the small block that its low bits name.
    const std::int64_t size = std::int64_t{m_Stride} * count;
    if (size < 0 || size > std::numeric_limits<std::int32_t>::max())
        return nullptr;
    m_Data = std::malloc(static_cast<std::size_t>(size));
    if (!m_Data)
        return nullptr;
    m_Count = count;
    m_Format = format;
    return m_Data;
}

void VX_GLVertex::clear() {
    std::free(m_Data);
    m_Data = nullptr;
    m_Format = -1;
    m_Count = 0;
}

void* VX_GLVertex::Seek(int index) const {
    return static_cast<char*>(m_Data) + static_cast<std::ptrdiff_t>(index) * m_Stride;
}

glm::tvec3<float>* VX_GLVertex::GetPosition(int index) const {
    return static_cast<glm::tvec3<float>*>(Seek(index));
}

void* VX_GLVertex::SetDiffuse(int format, void* vertex, const glm::tvec4<float>& value) {
    return store(format, vertex, &VertexLayout::diffuse, value);
}

void* VX_GLVertex::SetNormal(int format, void* vertex, const glm::tvec3<float>& value) {
    return store(format, vertex, &VertexLayout::normal, value);
}

void* VX_GLVertex::SetUV(int format, void* vertex, const glm::tvec2<float>& value) {
    return store(format, vertex, &VertexLayout::uv, value);
}

void* VX_GLVertex::SetTangent(int format, void* vertex, const glm::tvec3<float>& value) {
    return store(format, vertex, &VertexLayout::tangent, value);
}

glm::tvec4<float>* VX_GLVertex::GetDiffuse(int format, void* vertex) {
    return attribute<glm::tvec4<float>>(format, vertex, &VertexLayout::diffuse);
}

glm::tvec3<float>* VX_GLVertex::GetNormal(int format, void* vertex) {
    return attribute<glm::tvec3<float>>(format, vertex, &VertexLayout::normal);
}

glm::tvec2<float>* VX_GLVertex::GetUV(int format, void* vertex) {
    return attribute<glm::tvec2<float>>(format, vertex, &VertexLayout::uv);
}

glm::tvec3<float>* VX_GLVertex::GetTangent(int format, void* vertex) {
    return attribute<glm::tvec3<float>>(format, vertex, &VertexLayout::tangent);
}

void* VX_GLVertex::SetBumpVertex(int format, void* vertex, const glm::tvec3<float>& position,
                                 const glm::tvec4<float>& /*diffuse*/, const glm::tvec3<float>& normal,
                                 const glm::tvec3<float>& tangent, const glm::tvec2<float>& /*uv*/) {
    if (format != VX_GLVertexPNB)
        return vertex;
    *static_cast<glm::tvec3<float>*>(vertex) = position;
    SetNormal(format, vertex, normal);
    return SetTangent(format, vertex, tangent);
}

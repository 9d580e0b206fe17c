// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>

#include <VX_OpenGL64/meshes/VX_GLMeshData.h>
#include <VX_OpenGL64/meshes/private/VertexLayout.h>
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdint>

namespace {

using vx::VertexLayout;

// Sizes are 32 bits wide at the buffers; -1 for what does not fit.
int bytesOf(int stride, int count) {
    const std::int64_t bytes = std::int64_t(stride) * count;
    return bytes == std::int32_t(bytes) ? int(bytes) : -1;
}

// Writes into the buffer if it is large enough, else gives it new storage.
template <class Buffer>
void upload(Buffer*& buffer, unsigned int usage, int bytes, void* data) {
    if (!buffer)
        buffer = new Buffer;
    const int size = buffer->m_Size;
    buffer->BindBuffer();
    if (size >= bytes)
        buffer->Copy(0, bytes, data);
    else
        buffer->Allocate(bytes, usage, data);
    buffer->UnBindBuffer();
}

// An offset into the buffer that is bound, in the shape GL wants it.
const void* offset(int bytes) {
    return reinterpret_cast<const void*>(static_cast<std::intptr_t>(bytes));
}

// The format is a constant of each member of the family, so that no draw asks what it has.
template <int format>
inline constexpr const VertexLayout& layoutOf = *vx::vertexLayout(format);

template <int format>
void enableArrays() {
    constexpr const VertexLayout& layout = layoutOf<format>;
    glEnableClientState(GL_VERTEX_ARRAY);
    if constexpr (layout.normal != VertexLayout::kNone)
        glEnableClientState(GL_NORMAL_ARRAY);
    if constexpr (layout.diffuse != VertexLayout::kNone)
        glEnableClientState(GL_COLOR_ARRAY);
    if constexpr (layout.uv != VertexLayout::kNone)
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
}

template <int format>
void disableArrays() {
    constexpr const VertexLayout& layout = layoutOf<format>;
    if constexpr (layout.uv != VertexLayout::kNone)
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    if constexpr (layout.diffuse != VertexLayout::kNone)
        glDisableClientState(GL_COLOR_ARRAY);
    if constexpr (layout.normal != VertexLayout::kNone)
        glDisableClientState(GL_NORMAL_ARRAY);
    glDisableClientState(GL_VERTEX_ARRAY);
}

template <int format>
void setPointers() {
    constexpr const VertexLayout& layout = layoutOf<format>;
    glVertexPointer(3, GL_FLOAT, layout.stride, offset(0));
    if constexpr (layout.diffuse != VertexLayout::kNone)
        glColorPointer(4, GL_FLOAT, layout.stride, offset(layout.diffuse));
    if constexpr (layout.normal != VertexLayout::kNone)
        glNormalPointer(GL_FLOAT, layout.stride, offset(layout.normal));
    if constexpr (layout.uv != VertexLayout::kNone)
        glTexCoordPointer(2, GL_FLOAT, layout.stride, offset(layout.uv));
}

template <int format>
void drawArrays(VX_GLVBOVertex* vertices, unsigned int mode, int first, int count,
                const char* operation = __builtin_FUNCTION()) {
    if (!vertices)
        return;
    vx::needContext("VX_GLMeshDataRenderer", operation);
    enableArrays<format>();
    vertices->BindBuffer();
    setPointers<format>();
    glDrawArrays(mode, first, count);
    vertices->UnBindBuffer();
    disableArrays<format>();
}

template <int format>
void drawElements(VX_GLVBOVertex* vertices, VX_GLVBOIndex* indices, unsigned int mode, int count,
                  const char* operation = __builtin_FUNCTION()) {
    if (!vertices || !indices)
        return;
    vx::needContext("VX_GLMeshDataRenderer", operation);
    enableArrays<format>();
    vertices->BindBuffer();
    indices->BindBuffer();
    setPointers<format>();
    glDrawElements(mode, count, GL_UNSIGNED_INT, offset(0));
    indices->UnBindBuffer();
    vertices->UnBindBuffer();
    disableArrays<format>();
}

/// What GL gives as the place of an attribute that the program does not use: there is nothing to set.
constexpr auto kNoAttribute = static_cast<GLuint>(-1);

void enableTangents(GLuint attribute) {
    enableArrays<VX_GLVertexPNB>();
    if (attribute != kNoAttribute)
        glEnableVertexAttribArrayARB(attribute);
}

void disableTangents(GLuint attribute) {
    if (attribute != kNoAttribute)
        glDisableVertexAttribArrayARB(attribute);
    disableArrays<VX_GLVertexPNB>();
}

void setTangentPointers(GLuint attribute) {
    constexpr const VertexLayout& layout = layoutOf<VX_GLVertexPNB>;
    setPointers<VX_GLVertexPNB>();
    if (attribute != kNoAttribute)
        glVertexAttribPointerARB(attribute, 3, GL_FLOAT, GL_FALSE, layout.stride, offset(layout.tangent));
}

} // namespace

VX_GLMeshDataRenderer::~VX_GLMeshDataRenderer() {
    ClearAll();
}

void VX_GLMeshDataRenderer::ClearAll() {
    delete m_VertexBuffer;
    delete m_IndexBuffer;
    m_VertexBuffer = nullptr;
    m_IndexBuffer = nullptr;
    m_VertexCount = 0;
    m_IndexCount = 0;
    m_HasVertices = false;
}

void VX_GLMeshDataRenderer::makeVBOIndex(unsigned int usage, int count, unsigned int* data) {
    m_IndexCount = count;
    const int bytes = bytesOf(sizeof *data, count);
    if (count <= 0 || bytes < 0) {
        delete m_IndexBuffer;
        m_IndexBuffer = nullptr;
        return;
    }
    upload(m_IndexBuffer, usage, bytes, data);
}

void VX_GLMeshDataRenderer::makeVBOVertex(unsigned int usage, int stride, int count, void* data) {
    const int bytes = bytesOf(stride, count);
    if (count < 1 || bytes < 1) {
        delete m_VertexBuffer;
        m_VertexBuffer = nullptr;
        m_VertexCount = 0;
        m_HasVertices = false;
        return;
    }
    upload(m_VertexBuffer, usage, bytes, data);
    m_VertexCount = count;
    m_HasVertices = true;
}

void VX_GLMeshDataRenderer::UpdateByMeshData(unsigned int vertexUsage, unsigned int indexUsage,
                                             VX_GLMeshData* mesh) {
    UpdateRangeByMeshData(vertexUsage, indexUsage, mesh, mesh->m_Vertex ? mesh->m_Vertex->m_Count : 0,
                          mesh->m_IndexCount);
}

void VX_GLMeshDataRenderer::UpdateRangeByMeshData(unsigned int vertexUsage, unsigned int indexUsage,
                                                  VX_GLMeshData* mesh, int vertexCount, int indexCount) {
    m_CarriedVector0 = mesh->m_CarriedVector0;
    m_CarriedVector1 = mesh->m_CarriedVector1;
    m_CarriedVector2 = mesh->m_CarriedVector2;
    makeVBOIndex(indexUsage, std::min(indexCount, mesh->m_IndexCount), mesh->m_Index);
    if (const VX_GLVertex* vertices = mesh->m_Vertex)
        makeVBOVertex(vertexUsage, vertices->m_Stride, std::min(vertexCount, vertices->m_Count),
                      vertices->m_Data);
}

void VX_GLMeshDataRenderer::Draw(unsigned int mode, int format, int first, int count) {
    if (!m_HasVertices)
        return;
    if (count < 1)
        count = m_VertexCount;
    switch (format) {
        case VX_GLVertexP:
            return drawArrays<VX_GLVertexP>(m_VertexBuffer, mode, first, count);
        case VX_GLVertexPN:
            return drawArrays<VX_GLVertexPN>(m_VertexBuffer, mode, first, count);
        case VX_GLVertexPT:
            return drawArrays<VX_GLVertexPT>(m_VertexBuffer, mode, first, count);
        case VX_GLVertexPNT:
            return drawArrays<VX_GLVertexPNT>(m_VertexBuffer, mode, first, count);
        case VX_GLVertexPD:
            return drawArrays<VX_GLVertexPD>(m_VertexBuffer, mode, first, count);
        case VX_GLVertexPDN:
            return drawArrays<VX_GLVertexPDN>(m_VertexBuffer, mode, first, count);
        case VX_GLVertexPDT:
            return drawArrays<VX_GLVertexPDT>(m_VertexBuffer, mode, first, count);
        case VX_GLVertexPDNT:
            return drawArrays<VX_GLVertexPDNT>(m_VertexBuffer, mode, first, count);
        default:
            return;
    }
}

void VX_GLMeshDataRenderer::DrawWithIndex(unsigned int mode, int format) {
    if (!m_HasVertices)
        return;
    switch (format) {
        case VX_GLVertexP:
            return drawElements<VX_GLVertexP>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
        case VX_GLVertexPN:
            return drawElements<VX_GLVertexPN>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
        case VX_GLVertexPT:
            return drawElements<VX_GLVertexPT>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
        case VX_GLVertexPNT:
            return drawElements<VX_GLVertexPNT>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
        case VX_GLVertexPD:
            return drawElements<VX_GLVertexPD>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
        case VX_GLVertexPDT:
            return drawElements<VX_GLVertexPDT>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
        case VX_GLVertexPDNT:
            return drawElements<VX_GLVertexPDNT>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
        default: // VX_GLVertexPDN too, unlike in Draw: docs/kept-behaviour.md
            return;
    }
}

void VX_GLMeshDataRenderer::DrawTangent(unsigned int mode, int format, unsigned int attribute, int first,
                                        int count) {
    if (m_HasVertices && format == VX_GLVertexPNB)
        drawPNBVertex(mode, attribute, first, count < 1 ? m_VertexCount : count);
}

void VX_GLMeshDataRenderer::DrawTangentWithIndex(unsigned int mode, int format, unsigned int attribute) {
    if (m_HasVertices && format == VX_GLVertexPNB)
        drawWithIndexPNBVertex(mode, attribute);
}

void VX_GLMeshDataRenderer::DrawPNTInstanced(unsigned int mode, int first, int count, int positionAttribute,
                                             int normalAttribute, int uvAttribute, int instanceCount) {
    if (!m_VertexBuffer)
        return;
    VX_NEEDS_CONTEXT();
    constexpr const VertexLayout& layout = layoutOf<VX_GLVertexPNT>;
    constexpr GLsizei stride = layout.stride;
    const struct {
        GLuint attribute;
        GLint components;
        std::size_t place;
    } arrays[] = {{static_cast<GLuint>(positionAttribute), 3, 0},
                  {static_cast<GLuint>(normalAttribute), 3, layout.normal},
                  {static_cast<GLuint>(uvAttribute), 2, layout.uv}};
    const auto forEach = [&arrays](auto&& visit) {
        for (const auto& array : arrays)
            if (array.attribute != kNoAttribute)
                visit(array);
    };
    forEach([](const auto& array) { glEnableVertexAttribArray(array.attribute); });
    m_VertexBuffer->BindBuffer();
    forEach([](const auto& array) {
        glVertexAttribPointer(array.attribute, array.components, GL_FLOAT, GL_FALSE, stride,
                              offset(array.place));
    });
    m_VertexBuffer->UnBindBuffer(); // the pointers keep the buffer
    glDrawArraysInstancedARB(mode, first, count, instanceCount);
    forEach([](const auto& array) { glDisableVertexAttribArray(array.attribute); });
}

void VX_GLMeshDataRenderer::drawPVertex(unsigned int mode, int first, int count) {
    drawArrays<VX_GLVertexP>(m_VertexBuffer, mode, first, count);
}

void VX_GLMeshDataRenderer::drawPNVertex(unsigned int mode, int first, int count) {
    drawArrays<VX_GLVertexPN>(m_VertexBuffer, mode, first, count);
}

void VX_GLMeshDataRenderer::drawPTVertex(unsigned int mode, int first, int count) {
    drawArrays<VX_GLVertexPT>(m_VertexBuffer, mode, first, count);
}

void VX_GLMeshDataRenderer::drawPNTVertex(unsigned int mode, int first, int count) {
    drawArrays<VX_GLVertexPNT>(m_VertexBuffer, mode, first, count);
}

void VX_GLMeshDataRenderer::drawPDVertex(unsigned int mode, int first, int count) {
    drawArrays<VX_GLVertexPD>(m_VertexBuffer, mode, first, count);
}

void VX_GLMeshDataRenderer::drawPDNVertex(unsigned int mode, int first, int count) {
    drawArrays<VX_GLVertexPDN>(m_VertexBuffer, mode, first, count);
}

void VX_GLMeshDataRenderer::drawPDTVertex(unsigned int mode, int first, int count) {
    drawArrays<VX_GLVertexPDT>(m_VertexBuffer, mode, first, count);
}

void VX_GLMeshDataRenderer::drawPDNTVertex(unsigned int mode, int first, int count) {
    drawArrays<VX_GLVertexPDNT>(m_VertexBuffer, mode, first, count);
}

void VX_GLMeshDataRenderer::drawWithIndexPVertex(unsigned int mode) {
    drawElements<VX_GLVertexP>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
}

void VX_GLMeshDataRenderer::drawWithIndexPNVertex(unsigned int mode) {
    drawElements<VX_GLVertexPN>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
}

void VX_GLMeshDataRenderer::drawWithIndexPTVertex(unsigned int mode) {
    drawElements<VX_GLVertexPT>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
}

void VX_GLMeshDataRenderer::drawWithIndexPNTVertex(unsigned int mode) {
    drawElements<VX_GLVertexPNT>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
}

void VX_GLMeshDataRenderer::drawWithIndexPDVertex(unsigned int mode) {
    drawElements<VX_GLVertexPD>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
}

void VX_GLMeshDataRenderer::drawWithIndexPDNVertex(unsigned int mode) {
    drawElements<VX_GLVertexPDN>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
}

void VX_GLMeshDataRenderer::drawWithIndexPDTVertex(unsigned int mode) {
    drawElements<VX_GLVertexPDT>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
}

void VX_GLMeshDataRenderer::drawWithIndexPDNTVertex(unsigned int mode) {
    drawElements<VX_GLVertexPDNT>(m_VertexBuffer, m_IndexBuffer, mode, m_IndexCount);
}

void VX_GLMeshDataRenderer::drawPNBVertex(unsigned int mode, unsigned int attribute, int first, int count) {
    if (!m_VertexBuffer)
        return;
    VX_NEEDS_CONTEXT();
    enableTangents(attribute);
    m_VertexBuffer->BindBuffer();
    setTangentPointers(attribute);
    glDrawArrays(mode, first, count);
    m_VertexBuffer->UnBindBuffer();
    disableTangents(attribute);
}

void VX_GLMeshDataRenderer::drawWithIndexPNBVertex(unsigned int mode, unsigned int attribute) {
    if (!m_VertexBuffer || !m_IndexBuffer)
        return;
    VX_NEEDS_CONTEXT();
    enableTangents(attribute);
    m_VertexBuffer->BindBuffer();
    m_IndexBuffer->BindBuffer();
    setTangentPointers(attribute);
    glDrawElements(mode, m_IndexCount, GL_UNSIGNED_INT, offset(0));
    m_IndexBuffer->UnBindBuffer();
    m_VertexBuffer->UnBindBuffer();
    disableTangents(attribute);
}

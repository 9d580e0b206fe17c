// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_Platform/VX_Export.h>

/// Vertex format codes: a bit set of 1 position, 2 normal, 4 texture coordinate, 8 diffuse colour and
/// 16 tangent, of which only these nine combinations exist. Inside a vertex the order is position, diffuse,
/// normal, then texture coordinate or tangent; all are 32-bit floats without padding.
enum VX_GLVertexFormat : int {
    VX_GLVertexP = 1,     ///< 12 bytes: position
    VX_GLVertexPN = 3,    ///< 24 bytes: position, normal at 12
    VX_GLVertexPT = 5,    ///< 20 bytes: position, texture coordinate at 12
    VX_GLVertexPNT = 7,   ///< 32 bytes: position, normal at 12, texture coordinate at 24
    VX_GLVertexPD = 9,    ///< 28 bytes: position, diffuse at 12
    VX_GLVertexPDN = 11,  ///< 40 bytes: position, diffuse at 12, normal at 28
    VX_GLVertexPDT = 13,  ///< 36 bytes: position, diffuse at 12, texture coordinate at 28
    VX_GLVertexPDNT = 15, ///< 48 bytes: position, diffuse at 12, normal at 28, texture coordinate at 40
    VX_GLVertexPNB = 19   ///< 36 bytes: position, normal at 12, tangent at 24
};

/// One interleaved block of vertices in main memory, laid out as it goes to the GPU. No thread of its own, no
/// lock, no GL: one thread at a time.
class VX_EXPORT VX_GLVertex {
public:
    /// Empty: format -1, count 0, stride 0, no block.
    VX_GLVertex();
    /// A copy of `source`, which stays the caller's. Of an empty or absent source an empty one.
    explicit VX_GLVertex(VX_GLVertex* source);
    virtual ~VX_GLVertex();
    VX_GLVertex(const VX_GLVertex&) = delete;
    VX_GLVertex& operator=(const VX_GLVertex&) = delete;

    /// Gives room for at least `count` vertices of `format`. A block of the same format that is large enough
    /// stays as it is, and `m_Count` keeps its larger value; any other block is freed first. A new block is
    /// not cleared. Returns the block, owned by this object, or null for a code that does not exist (stride
    /// 0), for a negative count and for what memory or 31 bits of size cannot hold (stride set); the object
    /// is then empty.
    void* Allocate(int format, int count);

    /// Address of vertex `index`, without a look at the bounds: 0 to `m_Count` - 1 is inside.
    void* Seek(int index) const;
    /// The same address as the vertex's position.
    glm::tvec3<float>* GetPosition(int index) const;

    /// Each setter stores one attribute of the vertex of `format` at `vertex` and returns the address of the
    /// next vertex; for a format without that attribute it stores nothing and returns `vertex`.
    static void* SetDiffuse(int format, void* vertex, const glm::tvec4<float>& value);
    static void* SetNormal(int format, void* vertex, const glm::tvec3<float>& value);
    static void* SetUV(int format, void* vertex, const glm::tvec2<float>& value);
    static void* SetTangent(int format, void* vertex, const glm::tvec3<float>& value);

    /// Each getter returns the address of the attribute inside the vertex of `format` at `vertex`, or null
    /// for a format without it.
    static glm::tvec4<float>* GetDiffuse(int format, void* vertex);
    static glm::tvec3<float>* GetNormal(int format, void* vertex);
    static glm::tvec2<float>* GetUV(int format, void* vertex);
    static glm::tvec3<float>* GetTangent(int format, void* vertex);

    /// Stores position, normal and tangent of a vertex of format 19 and returns the next vertex; `diffuse`
    /// and `uv` have no place there and are ignored. Any other format: nothing, and returns `vertex`.
    static void* SetBumpVertex(int format, void* vertex, const glm::tvec3<float>& position,
                               const glm::tvec4<float>& diffuse, const glm::tvec3<float>& normal,
                               const glm::tvec3<float>& tangent, const glm::tvec2<float>& uv);

    /// Format code; -1 when nothing is allocated.
    int m_Format = -1;
    /// Vertices that the block holds; 0 when nothing is allocated.
    int m_Count = 0;
    /// Bytes per vertex; 0 until an allocation has chosen it.
    int m_Stride = 0;
    /// The block, from `malloc`, owned; null when nothing is allocated.
    void* m_Data = nullptr;

private:
    void clear();
};

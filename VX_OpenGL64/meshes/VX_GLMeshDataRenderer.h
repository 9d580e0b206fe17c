// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_Platform/VX_Export.h>

class VX_GLMeshData;
class VX_GLVBOIndex;
class VX_GLVBOVertex;

/// Keeps a mesh in a vertex buffer and an index buffer and draws it with client arrays, or with generic
/// attributes where told. It does not remember the format of what it holds: each draw is to be given the
/// format that was uploaded.
///
/// Everything but the constructor and the draws of an empty renderer needs a GL 1.5 context current on the
/// calling thread, the destructor included while buffers are held: one that shares with the context under
/// which they were made, since in another GL deletes what has the same name there. Uploads and draws end with
/// GL_ARRAY_BUFFER and GL_ELEMENT_ARRAY_BUFFER, as far as they use them, bound to 0, and draws with the
/// arrays that they enable disabled; array pointers stay as the draw set them. A draw that lacks its buffers
/// does nothing. GL errors are not read.
///
/// Usages are GL buffer hints such as GL_STATIC_DRAW, modes GL primitive modes such as GL_TRIANGLES, formats
/// codes of `VX_GLVertexFormat`.
class VX_EXPORT VX_GLMeshDataRenderer {
public:
    /// Empty; makes no GL call.
    VX_GLMeshDataRenderer() = default;
    /// As `ClearAll`.
    virtual ~VX_GLMeshDataRenderer();
    VX_GLMeshDataRenderer(const VX_GLMeshDataRenderer&) = delete;
    VX_GLMeshDataRenderer& operator=(const VX_GLMeshDataRenderer&) = delete;

    /// Deletes both buffers; the renderer is empty again. GL: glDeleteBuffers.
    void ClearAll();

    /// Uploads `count` indices of 32 bits, borrowed for the call. A buffer that is large enough is written
    /// into, without regard to `usage`, and keeps its size. 0 or less, and what takes more than 31 bits of
    /// size, deletes the buffer.
    /// GL: glGenBuffers, glBindBuffer, glBufferData or glBufferSubData, glDeleteBuffers.
    void makeVBOIndex(unsigned int usage, int count, unsigned int* data);
    /// The same for `count` vertices of `stride` bytes; a stride of 0 leaves nothing to draw.
    void makeVBOVertex(unsigned int usage, int stride, int count, void* data);
    /// Uploads the indices and vertices of the mesh (not null, borrowed for the call) and copies its three
    /// carried vectors. A mesh without indices deletes the index buffer; one without a vertex store leaves
    /// the vertices as they are.
    void UpdateByMeshData(unsigned int vertexUsage, unsigned int indexUsage, VX_GLMeshData* mesh);
    /// The same with the first `vertexCount` vertices and the first `indexCount` indices; counts above those
    /// of the mesh are cut down to them.
    void UpdateRangeByMeshData(unsigned int vertexUsage, unsigned int indexUsage, VX_GLMeshData* mesh,
                               int vertexCount, int indexCount);

    /// Draws `count` vertices from `first`, all of them for a count below 1, by the format's `draw...Vertex`.
    /// Draws nothing for format 19 and for codes that do not exist.
    void Draw(unsigned int mode, int format, int first, int count);
    /// Draws all indices by the format's `drawWithIndex...Vertex`. Draws nothing for formats 11 and 19 and
    /// for codes that do not exist.
    void DrawWithIndex(unsigned int mode, int format);
    /// Draws vertices of format 19, and of no other, by `drawPNBVertex`; a count below 1 means all.
    void DrawTangent(unsigned int mode, int format, unsigned int attribute, int first, int count);
    /// Draws the indices of a mesh of format 19, and of no other, by `drawWithIndexPNBVertex`.
    void DrawTangentWithIndex(unsigned int mode, int format, unsigned int attribute);
    /// Draws `instanceCount` instances of `count` vertices of format 7 from `first` through three generic
    /// attributes of the current program; one of -1, which the program does not have, is left out.
    /// GL (GL_ARB_draw_instanced): glEnableVertexAttribArray,
    /// glVertexAttribPointer, glDrawArraysInstancedARB, glDisableVertexAttribArray.
    void DrawPNTInstanced(unsigned int mode, int first, int count, int positionAttribute, int normalAttribute,
                          int uvAttribute, int instanceCount);

    /// One format each, named by its letters: `count` vertices from `first`, or all indices. GL:
    /// glEnableClientState, glBindBuffer, glVertexPointer and the like, glDrawArrays or glDrawElements,
    /// glDisableClientState.
    void drawPVertex(unsigned int mode, int first, int count);
    void drawPNVertex(unsigned int mode, int first, int count);
    void drawPTVertex(unsigned int mode, int first, int count);
    void drawPNTVertex(unsigned int mode, int first, int count);
    void drawPDVertex(unsigned int mode, int first, int count);
    void drawPDNVertex(unsigned int mode, int first, int count);
    void drawPDTVertex(unsigned int mode, int first, int count);
    void drawPDNTVertex(unsigned int mode, int first, int count);
    void drawWithIndexPVertex(unsigned int mode);
    void drawWithIndexPNVertex(unsigned int mode);
    void drawWithIndexPTVertex(unsigned int mode);
    void drawWithIndexPNTVertex(unsigned int mode);
    void drawWithIndexPDVertex(unsigned int mode);
    void drawWithIndexPDNVertex(unsigned int mode);
    void drawWithIndexPDTVertex(unsigned int mode);
    void drawWithIndexPDNTVertex(unsigned int mode);
    /// The tangent goes into generic attribute `attribute` of the current program; for -1, which
    /// `VX_Program::getAttribLocation` gives for a tangent that the program does not use, it is left out. GL
    /// (GL_ARB_vertex_shader): glEnableVertexAttribArrayARB, glVertexAttribPointerARB,
    /// glDisableVertexAttribArrayARB beside the above.
    void drawPNBVertex(unsigned int mode, unsigned int attribute, int first, int count);
    void drawWithIndexPNBVertex(unsigned int mode, unsigned int attribute);

    /// Owned; null when there are no vertices.
    VX_GLVBOVertex* m_VertexBuffer = nullptr;
    /// Owned; null when there are no indices.
    VX_GLVBOIndex* m_IndexBuffer = nullptr;
    /// What was uploaded last: vertices and indices, and whether there is anything to draw.
    int m_VertexCount = 0;
    int m_IndexCount = 0;
    bool m_HasVertices = false;

    /// Four fields for the host; the library reads nothing from them. The vectors are those of the mesh last
    /// uploaded, the index is never changed.
    int m_CarriedIndex = -1;
    glm::tvec3<float> m_CarriedVector0{1.0f, 1.0f, 1.0f};
    glm::tvec3<float> m_CarriedVector1{0.0f, 0.0f, 0.0f};
    glm::tvec3<float> m_CarriedVector2{0.0f, 0.0f, 0.0f};
};

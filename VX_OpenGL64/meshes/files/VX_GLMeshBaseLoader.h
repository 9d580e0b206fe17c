// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/VX_GLMeshData.h>
#include <VX_System/VX_SystemSimpleLex.h>

#include <vector>

/// Base of the mesh file readers: owns the meshes and the lexer of the file being read, and offers what a
/// host may want done to a loaded mesh. One thread at a time, no GL. A mesh is named by its place in
/// `m_Meshes`; a place where there is none, or a mesh without vertices, is left alone. Indices outside the
/// vertices are never followed.
class VX_EXPORT VX_GLMeshBaseLoader {
public:
    VX_GLMeshBaseLoader();
    virtual ~VX_GLMeshBaseLoader();
    VX_GLMeshBaseLoader(const VX_GLMeshBaseLoader&) = delete;
    VX_GLMeshBaseLoader& operator=(const VX_GLMeshBaseLoader&) = delete;

    /// Destroys the lexer, if there is one, and with it closes its file. The meshes stay.
    virtual void close();
    /// Deletes all meshes and empties the list.
    void freeAllMesh();

    /// Unit normal of the triangle `a`, `b`, `c` into `out`; it points at a viewer who sees the corners in
    /// counter-clockwise order. The zero vector for a triangle without area.
    static void CalcNormal(glm::tvec3<float>* a, glm::tvec3<float>* b, glm::tvec3<float>* c,
                           glm::tvec3<float>* out);

    /// Gives every vertex the negated mean of the unit normals of the faces that use it, by the index list
    /// taken as triangles. The mean is not normalised: it is shorter than 1 where faces differ in direction,
    /// and not a number where no face uses the vertex. Does nothing for a format without a normal. A triangle
    /// with an index outside the vertices contributes nothing. These normals point inward for X files,
    /// whose faces are clockwise seen from outside in left-handed coordinates; this turns that of vertex i:
    ///
    ///     VX_GLVertex::SetNormal(format, store->Seek(i), -*VX_GLVertex::GetNormal(format, store->Seek(i)));
    void makeNormalVector(int meshIndex);
    /// Sets every vertex's texture coordinate to (normal.xy - `offset`) * `scale`. Does nothing for a format
    /// without normal or texture coordinate.
    void makeTextureUVFromNorm(glm::tvec2<float>& offset, glm::tvec2<float>& scale, int meshIndex);
    /// Sets `m_Center` to the mean of all positions and `m_Radius` to the largest distance from the origin
    /// (not from that centre). With no vertices the centre is not a number; with no vertex store both are 0.
    void calcRaiusCenter(int meshIndex);
    /// Moves the mesh by -`m_Center` and scales it so that its farthest vertex is `scale` away from the
    /// origin. `m_Radius` becomes the largest distance before the scaling, `m_Center` becomes (0, 0, 0).
    /// Positions are not finite afterwards when all of them were at the centre.
    void shiftToCenterScale(float scale, int meshIndex);

    /// Owned; null when no file is open.
    VX_SystemSimpleLex* m_Lexer = nullptr;
    /// Owned, each from `new`.
    std::vector<VX_GLMeshData*> m_Meshes;
    /// Result of `calcRaiusCenter` and `shiftToCenterScale`.
    float m_Radius = 0.0f;
    glm::tvec3<float> m_Center{0.0f, 0.0f, 0.0f};

private:
    VX_GLMeshData* meshAt(int meshIndex) const;
    VX_GLVertex* verticesAt(int meshIndex) const;
};

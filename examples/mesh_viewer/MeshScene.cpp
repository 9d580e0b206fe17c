// SPDX-License-Identifier: MIT
#include <examples/mesh_viewer/MeshScene.h>

#include <examples/mesh_viewer/SkippedBlocks.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

/// A file may name vertices that are not there, and GL must not be led to them. Returns how many triangles
/// went.
int dropTrianglesOutside(VX_GLMeshData& mesh, int indexCount) {
    const auto count = static_cast<unsigned>(mesh.m_Vertex->m_Count);
    int kept = 0;
    for (int i = 0; i + 3 <= indexCount; i += 3) {
        const unsigned* corners = mesh.m_Index + i;
        if (std::all_of(corners, corners + 3, [count](unsigned index) { return index < count; }))
            kept = static_cast<int>(std::copy_n(corners, 3, mesh.m_Index + kept) - mesh.m_Index);
    }
    mesh.m_IndexCount = kept;
    return (indexCount - kept) / 3;
}

} // namespace

bool MeshScene::load(const char* path) {
    const auto start = std::chrono::steady_clock::now();
    if (!m_Loader.Load(path)) {
        std::fprintf(stderr, "%s: not an X text file with a mesh that can be read\n", path);
        return false;
    }
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    VX_GLMeshData& mesh = *m_Loader.m_Meshes[0];
    // The last quarter of a list of quads is empty.
    const int used = m_Loader.m_HasQuads ? mesh.m_IndexCount / 4 * 3 : mesh.m_IndexCount;
    const int dropped = dropTrianglesOutside(mesh, used);
    std::printf("%s: %d vertices, %d triangles%s, %zu texture coordinates; loaded in %.2f ms\n", path,
                mesh.m_Vertex->m_Count, mesh.m_IndexCount / 3, m_Loader.m_HasQuads ? " from quads" : "",
                m_Loader.m_UVs.size(), time.count());
    std::printf("skipped: %s\n", skippedBlocks(path).c_str());
    if (dropped > 0)
        std::printf("%d triangles name vertices that are not there\n", dropped);
    if (mesh.m_Vertex->m_Count == 0)
        std::puts("there is no mesh at the top level of the file");

    m_Loader.calcRaiusCenter(0);
    m_Loader.shiftToCenterScale(1.2f, 0);
    m_AsRead = std::make_unique<VX_GLMeshData>(&mesh);
    m_Loader.makeNormalVector(0);
    return true;
}

void MeshScene::prepare() {
    m_Flat = std::make_unique<VX_GLMeshDataRenderer>();
    m_Flat->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, m_AsRead.get());
    m_Smooth = std::make_unique<VX_GLMeshDataRenderer>();
    m_Smooth->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, m_Loader.m_Meshes[0]);
}

void MeshScene::release() {
    m_Flat.reset();
    m_Smooth.reset();
}

void MeshScene::draw(const Look& look, float /*aspect*/, double time) {
    if (m_AsRead->m_IndexCount == 0)
        return;
    glDisable(GL_CULL_FACE);
    glColor3f(0.85f, 0.85f, 0.8f);
    glRotatef(look.pitch, 1.0f, 0.0f, 0.0f);
    glRotatef(look.turnAt(time), 0.0f, 1.0f, 0.0f);
    glScalef(1.0f, 1.0f, -1.0f); // the files are left-handed
    (look.smooth ? m_Smooth : m_Flat)->DrawWithIndex(GL_TRIANGLES, VX_GLVertexPNT);
}

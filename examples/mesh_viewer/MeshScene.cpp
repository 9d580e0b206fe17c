// SPDX-License-Identifier: MIT
#include <examples/mesh_viewer/MeshScene.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <iterator>

bool MeshScene::load(const char* path) {
    const auto start = std::chrono::steady_clock::now();
    if (!m_Loader.Load(path)) {
        std::fprintf(stderr, "%s: not an X text file with a mesh that can be read\n", path);
        return false;
    }
    const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
    VX_GLMeshData& mesh = *m_Loader.m_Meshes[0];
    const auto quads = std::count(m_Loader.m_FaceSizes.begin(), m_Loader.m_FaceSizes.end(), 4);
    // The list as it is loaded would take every face for a quad once there is one.
    const int dropped = m_Loader.Triangulate();
    std::printf(
        "%s: %d vertices, %d triangles (of %td quads and %td triangles), %zu texture coordinates; "
        "loaded in %.2f ms\n",
        path, mesh.m_Vertex->m_Count, mesh.m_IndexCount / 3, quads, std::ssize(m_Loader.m_FaceSizes) - quads,
        m_Loader.m_UVs.size(), time.count());
    if (dropped > 0)
        std::printf("%d triangles name vertices that are not there\n", dropped);
    if (mesh.m_Vertex->m_Count == 0)
        std::puts("there is no mesh at the top level of the file");

    m_Loader.calcRaiusCenter(0);
    m_Loader.shiftToCenterScale(1.2f, 0);
    m_AsRead = std::make_unique<VX_GLMeshData>(&mesh);
    m_Loader.makeNormalVector(0);
    for (int i = 0; i < mesh.m_Vertex->m_Count; ++i) { // they point inward in these files
        void* vertex = mesh.m_Vertex->Seek(i);
        VX_GLVertex::SetNormal(VX_GLVertexPNT, vertex, -*VX_GLVertex::GetNormal(VX_GLVertexPNT, vertex));
    }
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

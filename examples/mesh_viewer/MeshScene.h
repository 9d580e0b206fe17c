// SPDX-License-Identifier: MIT
#pragma once

#include <examples/mesh_viewer/Scene.h>

#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>

#include <memory>

/// A mesh from an X text file, with the file's normals or with smooth ones made from its faces.
class MeshScene : public Scene {
public:
    /// Loads, centres and scales, and prints what there was. False when the file does not load.
    bool load(const char* path);

    void prepare() override;
    void release() override;
    void draw(const Look& look, float aspect, double time) override;

private:
    VX_GLMeshXLoader m_Loader;
    /// The mesh with the normals of the file; the loader's own gets the smooth ones.
    std::unique_ptr<VX_GLMeshData> m_AsRead;
    std::unique_ptr<VX_GLMeshDataRenderer> m_Flat, m_Smooth;
};

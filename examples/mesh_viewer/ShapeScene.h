// SPDX-License-Identifier: MIT
#pragma once

#include <examples/mesh_viewer/Scene.h>

#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>

#include <memory>
#include <vector>

/// Everything that can be generated, on one sheet: spheres, boxes, flat shapes.
class ShapeScene : public Scene {
public:
    void prepare() override;
    void release() override;
    void draw(const Look& look, float aspect, double time) override;

private:
    struct Shape {
        std::unique_ptr<VX_GLMeshDataRenderer> renderer;
        unsigned int mode;
        bool isFlat;
    };

    void add(VX_GLMeshData& mesh, unsigned int mode, bool isFlat = false);
    void addSpheres();
    void addBoxes();
    void addFlatShapes();
    void drawOverlays();

    std::vector<Shape> m_Shapes;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/shaders/VX_Program.h>

#include <array>

/// From where a view sees the scene, and on what ground.
struct Eye {
    const char* name;
    glm::vec3 at, up, background;
    float height; ///< what a parallel projection shows from bottom to top; 0 for a perspective
};

/// Balls around a large one, lit by a lamp that goes round, on a tiled floor.
class Scene {
public:
    /// Make and delete what is drawn with: buffers, a texture, a program. They serve in every context that
    /// shares with the present one.
    void prepare();
    void release();

    /// Where everything is at that second. Once for all pictures of a frame.
    void moveTo(double time);
    /// Draws with whichever context of these is current. State belongs to a context, so each call sets all it
    /// needs.
    void draw(const Eye& eye, int width, int height);

private:
    void look(const Eye& eye, float aspect);
    void drawAt(VX_GLMeshDataRenderer& mesh, const glm::vec4& place, const glm::vec4& color,
                bool tiled = false);

    static constexpr int kBalls = 7;
    std::array<glm::vec4, kBalls> m_Balls{}; ///< centre and radius
    glm::vec3 m_Lamp{0.0f};
    VX_GLCamera m_Camera;
    VX_GLMeshDataRenderer m_Sphere, m_Floor;
    VX_Program m_Program;
    unsigned int m_Tiles = 0;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>

#include <memory>
#include <string>
#include <vector>

/// A picture of the gallery: a render pipeline like any other, so `VX_GLHost::open` takes it as it is, with
/// keys and mouse, and shader files that are followed while it runs. A scene moves by `time` alone.
///
/// Everything is called on the thread that draws, with the context current, keys and mouse between two
/// frames.
class Scene : public VX_GLRenderpipeline {
public:
    /// `folder` is the scene's below scenes/; borrowed, for as long as the scene.
    explicit Scene(const char* folder) : m_Folder(folder) {}

    /// What its keys do and how they stand, a line each; they are letters but F, G and H.
    virtual std::vector<std::string> keys() const { return {}; }
    virtual void takeKey(unsigned /*key*/) {}
    /// From (0, 0) at the lower left to (1, 1); in the middle at first.
    void setMouse(const glm::vec2& place) { m_Mouse = place; }

    /// What is wrong with the shader files as they are now.
    const std::vector<std::string>& failures() const;
    /// Closes the shaders. An override ends with this one.
    void doStopRender() override;

protected:
    /// For `doStartRender`.
    void openShaders();
    /// For the beginning of `renderPipeline`: changed shader files take effect, the viewport is the picture.
    void beginFrame(const CGRect* bounds);
    float time() const;
    /// Both matrices are the camera's, with the field of view that shows what lies `within` these tangents of
    /// half its angles, across and up, whatever the picture's shape; GL_MODELVIEW is the matrix mode.
    void look(VX_GLCamera& camera, const glm::vec2& within) const;
    float aspect() const { return static_cast<float>(m_Width) / static_cast<float>(m_Height); }
    /// Of a file in the scene's folder.
    std::string path(const char* file) const;

    std::unique_ptr<VX_GLFilterManager> m_Shaders;
    int m_Width = 1;
    int m_Height = 1;
    glm::vec2 m_Mouse{0.5f, 0.5f};

private:
    const char* m_Folder;
};

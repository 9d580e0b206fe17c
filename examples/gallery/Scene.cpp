// SPDX-License-Identifier: MIT
#include <examples/gallery/Scene.h>

#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cmath>

std::string Scene::path(const char* file) const {
    return std::string(GALLERY_SCENES "/") + m_Folder + "/" + file;
}

void Scene::openShaders() {
    m_Shaders = std::make_unique<VX_GLFilterManager>();
    m_Shaders->AddResourcePath(path("").c_str());
    m_Shaders->WatchShaderFiles(true);
}

void Scene::doStopRender() {
    m_Shaders.reset();
    VX_GLRenderpipeline::doStopRender();
}

void Scene::beginFrame(const CGRect* bounds) {
    m_Width = std::max(static_cast<int>(bounds->size.width), 1);
    m_Height = std::max(static_cast<int>(bounds->size.height), 1);
    glViewport(0, 0, m_Width, m_Height);
    m_Shaders->RebuildChangedPrograms();
}

void Scene::look(VX_GLCamera& camera, const glm::vec2& within) const {
    camera.m_Fovy = 2.0f * glm::degrees(std::atan(std::max(within.y, within.x / aspect())));
    camera.m_Aspect = aspect();
    glMatrixMode(GL_PROJECTION);
    camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    camera.SetCameraView();
}

float Scene::time() const {
    return static_cast<float>(m_TargetGLView->GetFrameTime());
}

const std::vector<std::string>& Scene::failures() const {
    static const std::vector<std::string> none;
    return m_Shaders ? m_Shaders->RebuildFailures() : none;
}

// SPDX-License-Identifier: MIT
// A lit, turning box, drawn off-screen and brought to the screen by a glow filter. Edit a shader file while
// it runs: the picture follows with the next save, and what is wrong in it stands over the picture.
#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/camera/VX_GLLight.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <examples/support/Caption.h>
#include <examples/support/ExampleHost.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>

namespace {

// Two passes over the scene: its bright parts blurred, and everything put together.
class GlowFilter : public VX_GLFilter {
public:
    explicit GlowFilter(VX_GLFilterManager* manager) : VX_GLFilter(manager) {
        m_RenderTarget = new VX_GLRenderTarget;
    }

    VX_GLShaderInformation* ShadersInformation() override {
        static VX_GLShaderInformation table[] = {
            {"fullscreen.vert", "glow.frag"}, {"fullscreen.vert", "compose.frag"}, {nullptr, nullptr}};
        return table;
    }
    int GetMinRTCount() override { return 2; }
    // A shader that failed has left no program behind; once it is mended there are both.
    bool works() const { return m_Programs.size() == 2; }

    void beginScene() { Bind(0); }
    void endScene() { Unbind(); }

    void drawToScreen() {
        glDisable(GL_DEPTH_TEST);
        glDisable(GL_LIGHTING);
        VX_Program* glow = m_Programs[0];
        Bind(1);
        m_RenderTarget->SetDefaultProjection();
        glow->activeProgram();
        glow->set1i("scene", 0);
        glow->set1f("threshold", 0.55f);
        DrawFullScreen(0);
        glow->deactiveProgram();
        Unbind();

        VX_Program* compose = m_Programs[1];
        glActiveTexture(GL_TEXTURE1);
        glBindTexture(GL_TEXTURE_RECTANGLE_ARB, GetRTexture(1));
        glActiveTexture(GL_TEXTURE0);
        compose->activeProgram();
        compose->set1i("scene", 0);
        compose->set1i("glow", 1);
        compose->set2f("size", m_RenderTarget->m_Width, m_RenderTarget->m_Height);
        DrawFullScreen(0);
        compose->deactiveProgram();
    }
};

class BoxPipeline : public VX_GLRenderpipeline {
public:
    explicit BoxPipeline(const char* shaders) : m_Shaders(shaders) {}

    // The context is new and current: make everything.
    void doStartRender() override {
        m_Manager = std::make_unique<VX_GLFilterManager>();
        m_Manager->AddResourcePath(m_Shaders);
        m_Manager->WatchShaderFiles(true);
        m_Width = m_Height = 0;

        VX_GLGeometryCube::Color = glm::vec4(1.0f, 0.55f, 0.18f, 1.0f);
        VX_GLGeometryCube box;
        box.m_HalfSize = glm::vec3(0.75f);
        box.Generate(VX_GLVertexPDN);
        m_Box = std::make_unique<VX_GLMeshDataRenderer>();
        m_Box->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
        m_Light.SetPosition(0, glm::vec3(-0.15f, 0.9f, -1.1f));
    }

    // The context is still current: drop everything.
    void doStopRender() override {
        m_Failures.set({});
        m_Box.reset();
        m_Filter.reset();
        m_Manager.reset();
        VX_GLRenderpipeline::doStopRender();
    }

    void renderPipeline(CGRect* bounds) override {
        followSize(static_cast<int>(bounds->size.width), static_cast<int>(bounds->size.height));
        if (m_Manager->RebuildChangedPrograms())
            m_Failures.set(m_Manager->RebuildFailures());
        const bool filters = m_Filter->works();
        if (filters)
            m_Filter->beginScene();
        drawScene();
        if (filters) {
            m_Filter->endScene();
            m_Filter->drawToScreen();
        }
        m_Failures.draw(m_Width, m_Height);
    }

private:
    // A filter's textures are as large as the picture, so another size is another filter. Its shaders come
    // from the manager.
    void followSize(int width, int height) {
        if (width == m_Width && height == m_Height)
            return;
        m_Width = width;
        m_Height = height;
        glViewport(0, 0, width, height);
        m_Filter = std::make_unique<GlowFilter>(m_Manager.get());
        m_Manager->SetupFilter(m_Filter.get(), width, height, GL_RGBA8, GL_UNSIGNED_BYTE);
        m_Failures.set(m_Manager->RebuildFailures());
        m_Camera.m_Aspect = static_cast<float>(width) / static_cast<float>(std::max(height, 1));
        m_Camera.m_EyeAt.z = -5.5f / std::min(m_Camera.m_Aspect, 1.0f);
        m_Camera.m_ZFar = 5.0f - m_Camera.m_EyeAt.z;
    }

    void drawScene() {
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        m_Camera.SetProjectionPerspective();
        glMatrixMode(GL_MODELVIEW);
        m_Camera.SetCameraView();
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_LIGHTING);
        glEnable(GL_LIGHT0);
        glEnable(GL_COLOR_MATERIAL);
        m_Light.SetDirecionalLight(0);
        m_Light.ApplyLightMaterial(0);
        glRotatef(-25.0f, 1.0f, 0.0f, 0.0f);
        glRotatef(static_cast<float>(m_TargetGLView->GetFrameTime()) * 60.0f, 0.0f, 1.0f, 0.0f);
        m_Box->Draw(GL_QUADS, VX_GLVertexPDN, 0, 0);
    }

    const char* m_Shaders;
    std::unique_ptr<VX_GLFilterManager> m_Manager;
    std::unique_ptr<GlowFilter> m_Filter;
    std::unique_ptr<VX_GLMeshDataRenderer> m_Box;
    VX_GLCamera m_Camera;
    VX_GLLight m_Light;
    int m_Width = 0;
    int m_Height = 0;
    Caption m_Failures;
};

} // namespace

int main(int count, char** words) {
    VX_SetDiagnostics(true);
    ExampleOptions options;
    options.host.title = "First picture";
    const char* shaders = FIRST_PICTURE_SHADERS;
    for (int i = 1; i < count; ++i) {
        if (std::string_view(words[i]) == "--shaders" && i + 1 < count) {
            shaders = words[++i];
        } else if (!options.take(count, words, i)) {
            std::fprintf(stderr, "usage: %s [--shaders DIR] %s\n", words[0], ExampleOptions::kUsage);
            return 2;
        }
    }
    return runExample(NSInit(new BoxPipeline(shaders)).get(), options);
}

// SPDX-License-Identifier: MIT
// Shows the mesh of an X text file, or without a file every shape that the toolkit generates. It turns
// slowly; drag to turn it yourself. N switches the smooth normals, W the wireframe, Q or Escape ends.
#include <examples/mesh_viewer/MeshScene.h>
#include <examples/mesh_viewer/Scene.h>
#include <examples/mesh_viewer/ShapeScene.h>

#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <examples/support/ExampleHost.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>

namespace {

struct Options : ExampleOptions {
    const char* file = nullptr;
};

class ViewerPipeline : public VX_GLRenderpipeline {
public:
    ViewerPipeline(Scene& scene, const Look& look) : m_Scene(scene), m_Look(look) {}

    void doStartRender() override { m_Scene.prepare(); }

    void doStopRender() override {
        m_Scene.release();
        VX_GLRenderpipeline::doStopRender();
    }

    void renderPipeline(CGRect* bounds) override {
        glViewport(0, 0, static_cast<int>(bounds->size.width), static_cast<int>(bounds->size.height));
        glClearColor(0.08f, 0.09f, 0.11f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        m_Camera.m_Aspect = static_cast<float>(bounds->size.width / std::max(bounds->size.height, 1.0));
        // What is narrower than 4:3 is seen from further away, so that the same fits in.
        m_Camera.m_EyeAt = {0.0f, 0.0f, 5.0f * std::max(1.0f, kNarrowest / m_Camera.m_Aspect)};
        m_Camera.m_ZFar = m_Camera.m_EyeAt.z + 5.0f;
        glMatrixMode(GL_PROJECTION);
        m_Camera.SetProjectionPerspective();
        glMatrixMode(GL_MODELVIEW);
        m_Camera.SetCameraView();
        light();
        glPolygonMode(GL_FRONT_AND_BACK, m_Look.wireframe ? GL_LINE : GL_FILL);
        m_Scene.draw(m_Look, std::max(m_Camera.m_Aspect, kNarrowest), m_TargetGLView->GetFrameTime());
        glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    }

private:
    // A white light from the viewer's left, and a blue one from behind for what faces away.
    void light() {
        const float front[] = {-0.5f, 0.7f, 1.0f, 0.0f}, back[] = {0.5f, -0.4f, -1.0f, 0.0f};
        const float white[] = {0.9f, 0.9f, 0.9f, 1.0f}, blue[] = {0.1f, 0.15f, 0.4f, 1.0f};
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_LIGHTING);
        glEnable(GL_NORMALIZE);
        glEnable(GL_COLOR_MATERIAL);
        glEnable(GL_LIGHT0);
        glLightfv(GL_LIGHT0, GL_POSITION, front);
        glLightfv(GL_LIGHT0, GL_DIFFUSE, white);
        glEnable(GL_LIGHT1);
        glLightfv(GL_LIGHT1, GL_POSITION, back);
        glLightfv(GL_LIGHT1, GL_DIFFUSE, blue);
    }

    static constexpr float kNarrowest = 4.0f / 3.0f;
    Scene& m_Scene;
    const Look& m_Look;
    VX_GLCamera m_Camera;
};

bool handleEvent(NSEvent* event, NSWindow* window, Look& look) {
    const bool isKey = event->type() == NSKeyDown;
    if (isKey && event->key() == 'q')
        window->performClose();
    else if (isKey && event->key() == 'n')
        look.smooth = !look.smooth;
    else if (isKey && event->key() == 'w')
        look.wireframe = !look.wireframe;
    else if (event->type() == NSLeftMouseDragged) {
        look.yaw = look.yaw + static_cast<float>(event->deltaX()) * 0.5f;
        look.pitch = std::clamp(look.pitch + static_cast<float>(event->deltaY()) * 0.5f, -90.0f, 90.0f);
    } else {
        return false;
    }
    return true;
}

bool parse(int count, char** words, Options& options, Look& look) {
    for (int i = 1; i < count; ++i) {
        const std::string_view word = words[i];
        if (word == "--smooth")
            look.smooth = true;
        else if (word == "--wireframe")
            look.wireframe = true;
        else if (!word.starts_with('-') && !options.file)
            options.file = words[i];
        else if (!options.take(count, words, i))
            return false;
    }
    return true;
}

std::unique_ptr<Scene> makeScene(const char* file) {
    if (!file)
        return std::make_unique<ShapeScene>();
    auto mesh = std::make_unique<MeshScene>();
    return mesh->load(file) ? std::move(mesh) : nullptr;
}

} // namespace

int main(int count, char** words) {
    VX_SetDiagnostics(true);
    Options options;
    Look look;
    options.host.width = 800;
    options.host.height = 600;
    if (!parse(count, words, options, look)) {
        std::fprintf(stderr, "usage: %s [FILE.x] [--smooth] [--wireframe] %s\n", words[0],
                     ExampleOptions::kUsage);
        return 2;
    }
    const std::unique_ptr<Scene> scene = makeScene(options.file);
    if (!scene)
        return 1;
    options.host.title = options.file ? options.file : "Shapes";
    const auto pipeline = NSInit(new ViewerPipeline(*scene, look));
    return runExample(pipeline.get(), options, [&](VX_GLHost& host) {
        host.window()->setEventHandler(
            [&](NSEvent* event) { return handleEvent(event, host.window(), look); });
    });
}

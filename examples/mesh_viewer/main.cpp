// SPDX-License-Identifier: MIT
// Shows the mesh of an X text file, or without a file every shape that the toolkit generates. Drag to turn
// it; N switches the smooth normals, W the wireframe, Q or Escape ends.
#include <examples/mesh_viewer/MeshScene.h>
#include <examples/mesh_viewer/Scene.h>
#include <examples/mesh_viewer/ShapeScene.h>

#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <examples/support/PngFile.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string_view>

namespace {

struct Options {
    const char* file = nullptr;
    const char* headlessFile = nullptr;
    int width = 800;
    int height = 600;
    bool smooth = false;
    bool wireframe = false;
};

class ViewerPipeline : public VX_GLRenderpipeline {
public:
    ViewerPipeline(Scene& scene, Look& look, const char* headlessFile)
        : m_Scene(scene), m_Look(look), m_HeadlessFile(headlessFile) {}

    bool wroteFile() const { return m_WroteFile; }

    void doStartRender() override {
        m_Scene.prepare();
        m_Camera.m_EyeAt = {0.0f, 0.0f, 5.0f};
        m_Camera.m_Aspect = m_TargetGLView->width() / std::max(m_TargetGLView->height(), 1.0f);
    }

    void doStopRender() override {
        m_Scene.release();
        VX_GLRenderpipeline::doStopRender();
    }

    void renderPipeline(CGRect* bounds) override {
        glClearColor(0.08f, 0.09f, 0.11f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        glMatrixMode(GL_PROJECTION);
        m_Camera.SetProjectionPerspective();
        glMatrixMode(GL_MODELVIEW);
        m_Camera.SetCameraView();
        light();
        glPolygonMode(GL_FRONT_AND_BACK, m_Look.wireframe ? GL_LINE : GL_FILL);
        m_Scene.draw(m_Look, m_Camera.m_Aspect);
        glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
        if (m_HeadlessFile && !m_WroteFile) {
            m_WroteFile = writeFrameAsPng(m_HeadlessFile, static_cast<int>(bounds->size.width),
                                          static_cast<int>(bounds->size.height));
            NSApplication::sharedApplication()->stop();
        }
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

    Scene& m_Scene;
    Look& m_Look;
    const char* m_HeadlessFile;
    VX_GLCamera m_Camera;
    std::atomic<bool> m_WroteFile{false};
};

class Window : public NSWindow {
public:
    explicit Window(Look& look) : m_Look(look) {}

    void keyDown(NSEvent* event) override {
        if (event->key() == NSEscapeKey || event->key() == 'q')
            performClose();
        else if (event->key() == 'n')
            m_Look.smooth = !m_Look.smooth;
        else if (event->key() == 'w')
            m_Look.wireframe = !m_Look.wireframe;
    }
    void mouseDragged(NSEvent* event) override {
        m_Look.yaw = m_Look.yaw + static_cast<float>(event->deltaX()) * 0.5f;
        m_Look.pitch = std::clamp(m_Look.pitch + static_cast<float>(event->deltaY()) * 0.5f, -90.0f, 90.0f);
    }
    // The view samples its size when it is prepared.
    void windowDidResize() override {
        auto* view = dynamic_cast<VX_GLMainView*>(contentView());
        if (!view || !view->displayLink())
            return;
        view->stopRender();
        view->prepareOpenGL();
    }

private:
    Look& m_Look;
};

bool parse(int count, char** words, Options& options) {
    for (int i = 1; i < count; ++i) {
        const char* value = i + 1 < count ? words[i + 1] : nullptr;
        const std::string_view word = words[i];
        if (word == "--smooth") {
            options.smooth = true;
        } else if (word == "--wireframe") {
            options.wireframe = true;
        } else if (word == "--headless" && value) {
            options.headlessFile = value;
            ++i;
        } else if (word == "--size" && value) {
            if (std::sscanf(value, "%dx%d", &options.width, &options.height) != 2)
                return false;
            ++i;
        } else if (word.starts_with('-') || options.file) {
            return false;
        } else {
            options.file = words[i];
        }
    }
    return options.width > 0 && options.height > 0 && options.width <= 16384 && options.height <= 16384;
}

int show(Scene& scene, const Options& options) {
    Look look;
    look.smooth = options.smooth;
    look.wireframe = options.wireframe;
    const CGRect frame = CGRectMake(100, 100, options.width, options.height);
    Window* made = new Window(look);
    if (!made->initWithContentRect(frame, NSTitledWindowMask | NSResizableWindowMask))
        return 1;
    auto window = NSRef<Window>::adopt(made);
    auto view = NSRef<VX_GLMainView>::adopt((new VX_GLMainView)->initWithFrame(frame, nullptr));
    auto pipeline = NSRef<ViewerPipeline>::adopt(new ViewerPipeline(scene, look, options.headlessFile));
    pipeline->init();
    pipeline->setTargetGLView(view.get());
    window->setTitle(options.file ? options.file : "Shapes");
    window->setContentView(view.get());
    window->makeKeyAndOrderFront();

    view->ResetPixelFormatAttributes();
    view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
    view->AddPixelFormatAttribute(NSOpenGLPFAColorSize, 24);
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    if (!view->initializationWithPixelFormat(pipeline.get(), view->GetPixelFormatAttributes()))
        return 1;
    NSApplication::sharedApplication()->run();
    view->stopRender();
    view->releaseResources();
    if (!options.headlessFile)
        return 0;
    std::printf(pipeline->wroteFile() ? "%s written\n" : "%s cannot be written\n", options.headlessFile);
    return pipeline->wroteFile() ? 0 : 1;
}

} // namespace

int main(int count, char** words) {
    Options options;
    if (!parse(count, words, options)) {
        std::fprintf(stderr,
                     "usage: %s [FILE.x] [--headless FILE.png] [--size WxH] [--smooth] [--wireframe]\n",
                     words[0]);
        return 2;
    }
    std::unique_ptr<Scene> scene;
    if (options.file) {
        auto mesh = std::make_unique<MeshScene>();
        if (!mesh->load(options.file))
            return 1;
        scene = std::move(mesh);
    } else {
        scene = std::make_unique<ShapeScene>();
    }
    if (options.headlessFile)
        NSApplication::useHeadlessPlatform();
    return show(*scene, options);
}

// SPDX-License-Identifier: MIT
// A lit, turning box, drawn off-screen and brought to the screen by a glow filter.
#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/camera/VX_GLLight.h>
#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryCube.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSDate.h>
#include <VX_Platform/Foundation/NSTimer.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <examples/support/PngFile.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct Options {
    const char* headlessFile = nullptr;
    const char* shaders = FIRST_PICTURE_SHADERS;
    int frames = 0; // 0: no end
    int width = 640;
    int height = 360;
    bool printsRate = false;
};

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
    // A shader that failed has left no program behind.
    bool Setup() override { return m_Programs.size() == 2; }

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
    explicit BoxPipeline(const Options& options) : m_Options(options) {}

    int frames() const { return m_Frames; }
    bool wroteFile() const { return m_WroteFile; }

    // The context is new and current: make everything.
    void doStartRender() override {
        const int width = static_cast<int>(m_TargetGLView->width());
        const int height = static_cast<int>(m_TargetGLView->height());
        m_Manager = std::make_unique<VX_GLFilterManager>();
        m_Manager->AddResourcePath(m_Options.shaders);
        m_Filter = std::make_unique<GlowFilter>(m_Manager.get());
        m_FilterWorks = m_Manager->SetupFilter(m_Filter.get(), width, height, GL_RGBA8, GL_UNSIGNED_BYTE);

        VX_GLGeometryCube::Color = glm::vec4(1.0f, 0.55f, 0.18f, 1.0f);
        VX_GLGeometryCube box;
        box.m_HalfSize = glm::vec3(0.75f);
        box.Generate(kFormat);
        m_Box = std::make_unique<VX_GLMeshDataRenderer>();
        m_Box->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
        m_Camera.m_Aspect = m_TargetGLView->width() / std::max(m_TargetGLView->height(), 1.0f);
        m_Light.SetPosition(0, glm::vec3(-0.4f, 0.8f, -0.6f));
    }

    // The context is still current: drop everything.
    void doStopRender() override {
        m_Box.reset();
        m_Filter.reset();
        m_Manager.reset();
        VX_GLRenderpipeline::doStopRender();
    }

    void renderPipeline(CGRect* bounds) override {
        const int frame = ++m_Frames;
        if (m_FilterWorks)
            m_Filter->beginScene();
        drawScene(m_Options.frames ? std::min(frame, m_Options.frames) : frame);
        if (m_FilterWorks) {
            m_Filter->endScene();
            m_Filter->drawToScreen();
        }
        if (m_Options.headlessFile && frame == m_Options.frames) {
            m_WroteFile = writeFrameAsPng(m_Options.headlessFile, static_cast<int>(bounds->size.width),
                                          static_cast<int>(bounds->size.height));
            NSApplication::sharedApplication()->stop();
        }
    }

private:
    static constexpr int kFormat = 11; // position, colour, normal

    void drawScene(int frame) {
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
        glRotatef(static_cast<float>(frame), 0.0f, 1.0f, 0.0f);
        m_Box->Draw(GL_QUADS, kFormat, 0, 0);
    }

    const Options m_Options;
    std::unique_ptr<VX_GLFilterManager> m_Manager;
    std::unique_ptr<GlowFilter> m_Filter;
    std::unique_ptr<VX_GLMeshDataRenderer> m_Box;
    VX_GLCamera m_Camera;
    VX_GLLight m_Light;
    bool m_FilterWorks = false;
    std::atomic<int> m_Frames{0};
    std::atomic<bool> m_WroteFile{false};
};

class Window : public NSWindow {
public:
    void keyDown(NSEvent* event) override {
        if (event->key() == NSEscapeKey || event->key() == 'q')
            performClose();
    }
    // The view samples its size when it is prepared.
    void windowDidResize() override {
        auto* view = dynamic_cast<VX_GLMainView*>(contentView());
        if (!view || !view->displayLink())
            return;
        view->stopRender();
        view->prepareOpenGL();
    }
};

bool parse(int count, char** words, Options& options) {
    for (int i = 1; i < count; ++i) {
        const char* value = i + 1 < count ? words[i + 1] : nullptr;
        if (!std::strcmp(words[i], "--fps")) {
            options.printsRate = true;
            continue;
        }
        if (!value)
            return false;
        if (!std::strcmp(words[i], "--headless"))
            options.headlessFile = value;
        else if (!std::strcmp(words[i], "--shaders"))
            options.shaders = value;
        else if (!std::strcmp(words[i], "--frames"))
            options.frames = std::atoi(value);
        else if (std::strcmp(words[i], "--size") != 0 ||
                 std::sscanf(value, "%dx%d", &options.width, &options.height) != 2)
            return false;
        ++i;
    }
    if (options.headlessFile && options.frames < 1)
        options.frames = 60;
    return options.width > 0 && options.height > 0 && options.width <= 16384 && options.height <= 16384;
}

// Prints what has been drawn since the last call.
class RateMeter {
public:
    void print(VX_GLMainView* view, const BoxPipeline* pipeline) {
        const double now = NSDate::timeIntervalSinceReferenceDate();
        std::printf("%.2f frames/s, throttle: %s, refreshes lost to the host: %llu, to slow frames: %llu\n",
                    (pipeline->frames() - m_Frames) / (now - m_Time),
                    CVDisplayLinkGetThrottleName(view->displayLink()),
                    static_cast<unsigned long long>(view->GetLostRefreshes()),
                    static_cast<unsigned long long>(CVDisplayLinkGetMissedRefreshes(view->displayLink())));
        std::fflush(stdout);
        m_Frames = pipeline->frames();
        m_Time = now;
    }

private:
    int m_Frames = 0;
    double m_Time = NSDate::timeIntervalSinceReferenceDate();
};

} // namespace

int main(int count, char** words) {
    Options options;
    if (!parse(count, words, options)) {
        std::fprintf(stderr,
                     "usage: %s [--headless FILE.png] [--frames N] [--size WxH] [--shaders DIR] [--fps]\n",
                     words[0]);
        return 2;
    }
    if (options.headlessFile)
        NSApplication::useHeadlessPlatform();

    const CGRect frame = CGRectMake(100, 100, options.width, options.height);
    Window* made = new Window;
    if (!made->initWithContentRect(frame, NSTitledWindowMask | NSResizableWindowMask))
        return 1;
    auto window = NSRef<Window>::adopt(made);
    auto view = NSRef<VX_GLMainView>::adopt((new VX_GLMainView)->initWithFrame(frame, nullptr));
    auto pipeline = NSRef<BoxPipeline>::adopt(new BoxPipeline(options));
    pipeline->init();
    pipeline->setTargetGLView(view.get());
    window->setTitle("First picture");
    window->setContentView(view.get());
    window->makeKeyAndOrderFront();

    view->ResetPixelFormatAttributes();
    view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
    view->AddPixelFormatAttribute(NSOpenGLPFAColorSize, 24);
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    if (!view->initializationWithPixelFormat(pipeline.get(), view->GetPixelFormatAttributes()))
        return 1;

    RateMeter meter, whole;
    if (options.printsRate)
        NSTimer::scheduledTimerWithTimeInterval(
            1.0, [&](NSTimer*) { meter.print(view.get(), pipeline.get()); }, true);
    NSApplication::sharedApplication()->run();

    whole.print(view.get(), pipeline.get());
    view->stopRender();
    view->releaseResources();
    if (!options.headlessFile)
        return 0;
    std::printf(pipeline->wroteFile() ? "%s written\n" : "%s cannot be written\n", options.headlessFile);
    return pipeline->wroteFile() ? 0 : 1;
}

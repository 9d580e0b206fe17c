// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/backends/AlertPresenter.h>
#include <VX_Platform/backends/Platform.h>
#include <VX_Platform/backends/headless/EGLDevices.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace vx {

namespace {

class HeadlessSurface : public Surface {
public:
    HeadlessSurface(GLDriver& gl, GLDriver::Handle config, const WindowBackend* window, CGRect frame,
                    DisplayInfo display)
        : m_GL(gl), m_Config(config), m_Window(window), m_Display(std::move(display)) {
        follow(frame);
    }
    ~HeadlessSurface() override { destroy(); }

    GLDriver::Handle handle() const override { return m_Handle; }
    const WindowBackend* window() const override { return m_Window; }

    void follow(CGRect frame) override {
        const int width = static_cast<int>(frame.size.width);
        const int height = static_cast<int>(frame.size.height);
        if (m_Handle && width == m_Width && height == m_Height)
            return;
        destroy();
        m_Width = width;
        m_Height = height;
        m_Handle = m_GL.createPbuffer(m_Config, width, height);
    }

    DisplayInfo display() const override { return m_Display; }
    std::unique_ptr<RefreshSource> makeRefreshSource() const override { return nullptr; }

private:
    void destroy() {
        if (m_Handle)
            m_GL.destroySurface(m_Handle);
        m_Handle = nullptr;
    }

    GLDriver& m_GL;
    GLDriver::Handle m_Config;
    const WindowBackend* m_Window;
    DisplayInfo m_Display;
    GLDriver::Handle m_Handle = nullptr;
    int m_Width = 0;
    int m_Height = 0;
};

// Keeps what a window system would keep, and tells the window of each change as one would.
class HeadlessWindow : public WindowBackend {
public:
    HeadlessWindow(NSWindow* window, CGRect frame) : m_Window(window), m_Frame(frame) {}

    void setTitle(const char*) override {}
    void setFrame(CGRect frame) override {
        m_Frame = frame;
        m_Window->backendFrameChanged(frame);
    }
    CGRect frame() const override { return m_Frame; }
    void show() override { m_Window->backendFocusChanged(true); }
    void hide() override { m_Window->backendFocusChanged(false); }
    void setBordered(bool) override {}
    unsigned long nativeWindow() const override { return 0; }

private:
    NSWindow* m_Window;
    CGRect m_Frame;
};

class HeadlessPlatform : public Platform {
public:
    HeadlessPlatform(GLDriver::Handle display, const HeadlessOptions& options)
        : m_GL(display, GLDriver::SurfaceKind::pbuffer) {
        m_Display.id = 1;
        m_Display.name = "Headless";
        m_Display.bounds.size = options.displaySize;
        m_Display.refreshRate = options.refreshRate;
        alertsGoToLog = true;
    }
    ~HeadlessPlatform() override { alertsGoToLog = false; }

    const char* name() const override { return "headless"; }
    GLDriver& gl() override { return m_GL; }
    std::vector<DisplayInfo> displays() override { return {m_Display}; }

    std::unique_ptr<WindowBackend> makeWindow(NSWindow* window, CGRect frame, bool) override {
        return std::make_unique<HeadlessWindow>(window, frame);
    }
    std::unique_ptr<WindowBackend> adoptWindow(NSWindow*, unsigned long nativeWindow) override {
        NSLog("The headless platform cannot take over window 0x%lx: it has no window system", nativeWindow);
        return nullptr;
    }
    std::unique_ptr<Surface> makeSurface(GLDriver::Handle config, WindowBackend* window,
                                         CGRect frame) override {
        auto surface = std::make_unique<HeadlessSurface>(m_GL, config, window, frame, m_Display);
        if (!surface->handle())
            return nullptr;
        return surface;
    }

    bool drawsWithoutWindow() const override { return true; }

    void handleEvents(double seconds) override {
        std::unique_lock lock(m_Lock);
        m_Wake.wait_for(lock, std::chrono::duration<double>(seconds), [this] { return m_Woken; });
        m_Woken = false;
    }
    void wake() override {
        std::lock_guard lock(m_Lock);
        m_Woken = true;
        m_Wake.notify_one();
    }

private:
    GLDriver m_GL;
    DisplayInfo m_Display;
    std::mutex m_Lock;
    std::condition_variable m_Wake;
    bool m_Woken = false;
};

} // namespace

std::unique_ptr<Platform> makeHeadlessPlatform(const HeadlessOptions& options) {
    GLDriver::Handle display = openHeadlessDisplay(options.device);
    if (!display) {
        NSLog(
            "The headless platform cannot start: no EGL device and no surfaceless display gives desktop "
            "OpenGL");
        return nullptr;
    }
    return std::make_unique<HeadlessPlatform>(display, options);
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/headless/HeadlessPlatform.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/backends/headless/EGLDevices.h>
#include <VX_Platform/backends/headless/HeadlessDesktop.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace vx {

namespace {

class HeadlessSurface : public Surface {
public:
    HeadlessSurface(GLDriver& gl, GLDriver::Handle config, std::shared_ptr<HeadlessDesktop> desktop,
                    const WindowBackend* window, CGRect frame)
        : m_GL(gl), m_Config(config), m_Desktop(std::move(desktop)), m_Window(window) {
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

    DisplayInfo display() const override { return m_Desktop->displayOf(m_Window); }
    std::unique_ptr<RefreshSource> makeRefreshSource() const override { return nullptr; }

private:
    void destroy() {
        if (m_Handle)
            m_GL.destroySurface(m_Handle);
        m_Handle = nullptr;
    }

    GLDriver& m_GL;
    GLDriver::Handle m_Config;
    std::shared_ptr<HeadlessDesktop> m_Desktop;
    const WindowBackend* m_Window;
    GLDriver::Handle m_Handle = nullptr;
    int m_Width = 0;
    int m_Height = 0;
};

class HeadlessPlatform : public Platform {
public:
    HeadlessPlatform(GLDriver::Handle display, PlatformEvents& events)
        : m_GL(display, GLDriver::SurfaceKind::pbuffer),
          m_Desktop(std::make_shared<HeadlessDesktop>(events)) {}

    const char* name() const override { return "headless"; }
    GLDriver& gl() override { return m_GL; }
    std::vector<DisplayInfo> displays() override { return m_Desktop->displays(); }

    std::unique_ptr<WindowBackend> makeWindow(CGRect frame, WindowStyle) override {
        return std::make_unique<HeadlessWindow>(m_Desktop, frame);
    }
    std::unique_ptr<WindowBackend> adoptWindow(const NativeWindow& native) override {
        NSLog("The headless platform cannot take over window 0x%lx: it has no window system",
              static_cast<unsigned long>(native.handle));
        return nullptr;
    }
    std::unique_ptr<Surface> makeSurface(GLDriver::Handle config, WindowBackend* window,
                                         CGRect frame) override {
        auto surface = std::make_unique<HeadlessSurface>(m_GL, config, m_Desktop, window, frame);
        if (!surface->handle())
            return nullptr;
        return surface;
    }

    bool drawsWithoutWindow() const override { return true; }
    int presentAlert(const AlertContents& contents) override { return logAlert(contents); }

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

    bool plugDisplay(const std::string& name, CGRect bounds, double refreshRate) override {
        return m_Desktop->plug(name, bounds, refreshRate);
    }
    bool unplugDisplay(const std::string& name) override { return m_Desktop->unplug(name); }

private:
    GLDriver m_GL;
    std::shared_ptr<HeadlessDesktop> m_Desktop;
    std::mutex m_Lock;
    std::condition_variable m_Wake;
    bool m_Woken = false;
};

} // namespace

std::unique_ptr<Platform> startHeadlessPlatform(PlatformEvents& events, const HeadlessOptions& options) {
    GLDriver::Handle display = openHeadlessDisplay(options.device);
    if (!display) {
        NSLog(
            "The headless platform cannot start: no EGL device and no surfaceless display gives desktop "
            "OpenGL");
        return nullptr;
    }
    auto platform = std::make_unique<HeadlessPlatform>(display, events);
    if (!platform->plugDisplay("Headless", {{}, options.displaySize}, options.refreshRate))
        platform->plugDisplay("Headless", {{}, HeadlessOptions().displaySize}, HeadlessOptions().refreshRate);
    return platform;
}

} // namespace vx

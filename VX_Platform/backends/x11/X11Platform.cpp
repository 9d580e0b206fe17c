// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/X11Platform.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <VX_Platform/Foundation/private/Clock.h>
#include <VX_Platform/backends/x11/ForeignWindow.h>
#include <VX_Platform/backends/x11/SDLInput.h>
#include <VX_Platform/backends/x11/SDLWindow.h>
#include <VX_Platform/backends/x11/X11AlertWindow.h>
#include <VX_Platform/backends/x11/X11Surface.h>

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <SDL.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace vx {

namespace {

class X11Platform : public Platform {
public:
    X11Platform(std::unique_ptr<X11Connection> connection, EGLDisplay display,
                std::unique_ptr<SDLSession> session, PlatformEvents& events)
        : m_Events(events),
          m_Session(std::move(session)),
          m_Connection(std::move(connection)),
          m_GL(std::make_unique<GLDriver>(display, GLDriver::SurfaceKind::window)),
          m_ForeignWindows(*m_Connection, events) {}

    const char* name() const override { return "x11"; }
    GLDriver& gl() override { return *m_GL; }
    std::vector<DisplayInfo> displays() override { return m_Connection->displays(); }

    std::unique_ptr<WindowBackend> makeWindow(CGRect frame, WindowStyle style) override {
        auto window = SDLWindow::make(
            *m_Session, m_Events, [this] { return displays(); }, frame, style);
        if (window) { // SDL says nothing of its end
            XSelectInput(m_Connection->display(), window->nativeWindow().handle, StructureNotifyMask);
            XFlush(m_Connection->display());
        }
        return window;
    }
    std::unique_ptr<WindowBackend> adoptWindow(const NativeWindow& native) override {
        if (native.kind != NativeWindow::Kind::x11) {
            NSLog("The X11 platform can take over X11 windows only");
            return nullptr;
        }
        return m_ForeignWindows.adopt(native.handle);
    }
    std::unique_ptr<Surface> makeSurface(GLDriver::Handle config, WindowBackend* window,
                                         CGRect frame) override {
        return makeX11Surface(*m_Connection, *m_GL, config, window, frame);
    }
    bool drawsWithoutWindow() const override { return false; }
    int presentAlert(const AlertContents& contents) override { return presentX11Alert(contents); }

    void handleEvents(double seconds) override {
        const auto now = [] { return Clock::system().now(); };
        const std::uint64_t end =
            now() + static_cast<std::uint64_t>(std::clamp(seconds, 0.0, 1e6) * Clock::kSecond);
        while (!takeEvents()) {
            const std::uint64_t time = now();
            if (time >= end)
                return;
            // Events on our own connection may have been read by who waited for an answer on it.
            m_Session->wait(std::min(double(end - time) / Clock::kSecond, kLongestWait));
        }
    }

    void wake() override { m_Session->wake(); }
    void keepScreenOn(bool keep) override { m_Session->keepScreenOn(keep); }
    void composeText(bool compose) override { m_Session->composeText(compose); }
    void showPointer(bool show) override { m_Session->showPointer(show); }

private:
    static constexpr double kLongestWait = 0.05;

    bool hasEnded() const { return m_Connection->hasEnded() || m_Session->hasEnded(); }

    // Whether there was anything that a caller may wait for.
    bool takeEvents() {
        if (hasEnded())
            return tellEnd() || m_Session->takeWake();
        SDL_PumpEvents();
        const bool inputCame = reportSDLEvents(m_Events, m_Connection->display());
        const bool displaysChanged = m_Connection->takeEvents([this](const XEvent& event) { follow(event); });
        if (displaysChanged)
            m_Events.displaysChanged();
        return m_Session->takeWake() || inputCame || displaysChanged;
    }

    void follow(const XEvent& event) {
        SDLWindow* window = event.type == DestroyNotify ? SDLWindow::withNative(event.xany.window) : nullptr;
        if (window)
            window->noteEnd();
        else
            m_ForeignWindows.follow(event);
    }

    bool tellEnd() {
        if (std::exchange(m_EndTold, true))
            return false;
        m_Events.serverEnded();
        return true;
    }

    // In the order of their need: surfaces and EGL draw on the connection.
    PlatformEvents& m_Events;
    std::unique_ptr<SDLSession> m_Session;
    std::unique_ptr<X11Connection> m_Connection;
    std::unique_ptr<GLDriver> m_GL;
    ForeignWindows m_ForeignWindows;
    bool m_EndTold = false;
};

EGLDisplay openEGL(const X11Connection& connection) {
    EGLDisplay display = eglGetPlatformDisplay(EGL_PLATFORM_X11_KHR, connection.display(), nullptr);
    return display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) ? display : EGL_NO_DISPLAY;
}

const char* serverName() {
    const char* name = std::getenv("DISPLAY");
    return name ? name : "(DISPLAY is not set)";
}

} // namespace

std::string x11Presence() {
    const char* name = std::getenv("DISPLAY");
    return name && *name ? std::string("DISPLAY is ") + name : std::string();
}

std::unique_ptr<Platform> startX11Platform(PlatformEvents& events, const HeadlessOptions&) {
    std::unique_ptr<X11Connection> connection = X11Connection::open();
    if (!connection) {
        NSLog(
            "No display: the X server %s cannot be reached. A host without one chooses the headless platform "
            "(NSApplication::useHeadlessPlatform)",
            serverName());
        return nullptr;
    }
    EGLDisplay display = openEGL(*connection);
    if (display == EGL_NO_DISPLAY) {
        NSLog("The X server gives no EGL: %s", GLDriver::lastError().c_str());
        return nullptr;
    }
    std::unique_ptr<SDLSession> session = SDLSession::start();
    if (!session) {
        eglTerminate(display);
        return nullptr;
    }
    return std::make_unique<X11Platform>(std::move(connection), display, std::move(session), events);
}

int presentX11Alert(const AlertContents& contents) {
    if (VX_GetDiagnostics())
        logAlert(contents);
    const std::optional<int> result = runX11AlertWindow(contents);
    return result ? *result : logAlert(contents);
}

VX_Library x11Library() {
    SDL_version version;
    SDL_GetVersion(&version);
    return {"windows and input", "SDL",
            std::to_string(version.major) + "." + std::to_string(version.minor) + "." +
                std::to_string(version.patch)};
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/X11Platform.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <VX_Platform/backends/x11/ForeignWindow.h>
#include <VX_Platform/backends/x11/SDLInput.h>
#include <VX_Platform/backends/x11/SDLWindow.h>
#include <VX_Platform/backends/x11/X11AlertWindow.h>
#include <VX_Platform/backends/x11/X11Surface.h>

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <SDL.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace vx {

namespace {

class X11Platform : public Platform {
public:
    X11Platform(std::unique_ptr<X11Connection> connection, EGLDisplay display, PlatformEvents& events)
        : m_Events(events),
          m_Connection(std::move(connection)),
          m_GL(std::make_unique<GLDriver>(display, GLDriver::SurfaceKind::window)),
          m_ForeignWindows(*m_Connection, events),
          m_WakeEvent(SDL_RegisterEvents(1)) {}

    ~X11Platform() override {
        // EGL draws on the connection, so it goes first.
        m_GL.reset();
        m_Connection.reset();
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }

    const char* name() const override { return "x11"; }
    GLDriver& gl() override { return *m_GL; }
    std::vector<DisplayInfo> displays() override { return m_Connection->displays(); }

    std::unique_ptr<WindowBackend> makeWindow(CGRect frame, WindowStyle style) override {
        return SDLWindow::make(
            m_Events, [this] { return displays(); }, frame, style);
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
        SDL_Event event;
        const int milliseconds = static_cast<int>(std::ceil(std::max(seconds, 0.0) * 1000.0));
        if (SDL_WaitEventTimeout(&event, milliseconds))
            do {
                reportSDLEvent(event, m_Events);
            } while (SDL_PollEvent(&event));
        if (m_Connection->takeEvents([this](const _XEvent& event) { m_ForeignWindows.follow(event); }))
            m_Events.displaysChanged();
    }

    void wake() override {
        SDL_Event event{};
        event.type = m_WakeEvent;
        SDL_PushEvent(&event);
    }

private:
    PlatformEvents& m_Events;
    std::unique_ptr<X11Connection> m_Connection;
    std::unique_ptr<GLDriver> m_GL;
    ForeignWindows m_ForeignWindows;
    Uint32 m_WakeEvent;
};

// SDL takes windows and input only, and leaves signals and the screen saver's wishes to the host.
bool startSDL() {
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    // Whatever the environment says of SDL's driver: the surfaces are X11's.
    SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, "x11", SDL_HINT_OVERRIDE);
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetMainReady();
    return SDL_InitSubSystem(SDL_INIT_VIDEO) == 0;
}

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
    if (!startSDL()) {
        NSLog("Windows are not available: %s", SDL_GetError());
        eglTerminate(display);
        return nullptr;
    }
    return std::make_unique<X11Platform>(std::move(connection), display, events);
}

int presentX11Alert(const AlertContents& contents) {
    if (VX_GetDiagnostics())
        logAlert(contents);
    const std::optional<int> result = runX11AlertWindow(contents);
    return result ? *result : logAlert(contents);
}

} // namespace vx

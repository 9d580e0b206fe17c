// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/SDLWindow.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <SDL.h>
#include <SDL_syswm.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <chrono>
#include <thread>
#include <utility>

namespace vx {

namespace {

std::vector<SDLWindow*> all;

constexpr auto kLongestWaitForTheManager = std::chrono::seconds(1);

int pixels(double length) {
    return std::max(1, static_cast<int>(length));
}

// SDL leaves on the screen whatever was there; a window whose view is elsewhere would show that.
void paintEmptyParts(SDL_Window* window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info))
        return;
    Display* const display = info.info.x11.display;
    XSetWindowBackground(display, info.info.x11.window, BlackPixel(display, DefaultScreen(display)));
    XSync(display, False); // from here on it is there for other connections
}

// SDL waits for a window that it shows until it is shown, and a window manager that hangs or is just starting
// may never do that. For one that is shown it does not wait.
bool mapInTime(SDL_Window* window) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(window, &info))
        return true;
    Display* const display = info.info.x11.display;
    XMapRaised(display, info.info.x11.window);
    const auto end = std::chrono::steady_clock::now() + kLongestWaitForTheManager;
    XWindowAttributes attributes;
    while (XGetWindowAttributes(display, info.info.x11.window, &attributes) &&
           attributes.map_state == IsUnmapped) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

} // namespace

std::unique_ptr<SDLWindow> SDLWindow::make(const SDLSession& session, PlatformEvents& events,
                                           Displays displays, CGRect frame, WindowStyle style) {
    if (session.hasEnded())
        return nullptr;
    Uint32 flags = SDL_WINDOW_HIDDEN;
    flags |= style.resizable ? SDL_WINDOW_RESIZABLE : 0;
    flags |= style.bordered ? 0 : SDL_WINDOW_BORDERLESS;
    SDL_Window* window =
        SDL_CreateWindow("", static_cast<int>(frame.origin.x), static_cast<int>(frame.origin.y),
                         pixels(frame.size.width), pixels(frame.size.height), flags);
    if (!window) {
        NSLog("A window of %.0f x %.0f cannot be made: %s", frame.size.width, frame.size.height,
              SDL_GetError());
        return nullptr;
    }
    paintEmptyParts(window);
    return std::unique_ptr<SDLWindow>(new SDLWindow(session, events, std::move(displays), window, style));
}

SDLWindow::SDLWindow(const SDLSession& session, PlatformEvents& events, Displays displays, SDL_Window* window,
                     WindowStyle style)
    : m_Session(session),
      m_Events(events),
      m_Displays(std::move(displays)),
      m_Window(window),
      m_Style(style) {
    all.push_back(this);
}

SDLWindow::~SDLWindow() {
    std::erase(all, this);
    if (m_Session.hasEnded())
        return;
    const bool shown = SDL_GetWindowFlags(m_Window) & SDL_WINDOW_SHOWN;
    if (!m_Ended || !shown)
        SDL_DestroyWindow(m_Window);
}

SDLWindow* SDLWindow::withID(std::uint32_t id) {
    SDL_Window* window = SDL_GetWindowFromID(id);
    const auto found = std::ranges::find(all, window, &SDLWindow::m_Window);
    return found == all.end() ? nullptr : *found;
}

SDLWindow* SDLWindow::withNative(std::uintptr_t handle) {
    const auto found =
        std::ranges::find(all, handle, [](const SDLWindow* window) { return window->nativeWindow().handle; });
    return found == all.end() ? nullptr : *found;
}

void SDLWindow::setTitle(const char* title) {
    if (isThere())
        SDL_SetWindowTitle(m_Window, title);
}

void SDLWindow::place(CGRect frame) {
    if (!isThere())
        return;
    SDL_SetWindowPosition(m_Window, static_cast<int>(frame.origin.x), static_cast<int>(frame.origin.y));
    SDL_SetWindowSize(m_Window, pixels(frame.size.width), pixels(frame.size.height));
}

void SDLWindow::setFrame(CGRect frame) {
    place(frame);
    m_Events.frameChanged(*this, this->frame());
}

CGRect SDLWindow::frame() const {
    int x = 0, y = 0, width = 0, height = 0;
    if (m_Session.hasEnded())
        return {};
    SDL_GetWindowPosition(m_Window, &x, &y);
    SDL_GetWindowSize(m_Window, &width, &height);
    return CGRectMake(x, y, width, height);
}

bool SDLWindow::show(bool withKeyboard) {
    if (!isThere())
        return false;
    if (!mapInTime(m_Window)) {
        NSLog("The window manager does not answer; a window is shown when it does");
        return true;
    }
    SDL_ShowWindow(m_Window);
    if (withKeyboard) {
        SDL_RaiseWindow(m_Window);
        takeFocusWithoutManager();
    }
    coverPanels(fillsDisplay());
    return true;
}

void SDLWindow::hide() {
    if (isThere())
        SDL_HideWindow(m_Window);
}

// A window manager gives the focus to a window that is raised; without one, nobody does.
void SDLWindow::takeFocusWithoutManager() {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!SDL_GetWindowWMInfo(m_Window, &info))
        return;
    Display* const display = info.info.x11.display;
    Atom type = None;
    int bits = 0;
    unsigned long count = 0, left = 0;
    unsigned char* manager = nullptr;
    XGetWindowProperty(display, DefaultRootWindow(display),
                       XInternAtom(display, "_NET_SUPPORTING_WM_CHECK", False), 0, 1, False, AnyPropertyType,
                       &type, &bits, &count, &left, &manager);
    if (manager)
        XFree(manager);
    if (count == 0)
        SDL_SetWindowInputFocus(m_Window);
}

// What a window manager takes from windows that are shown, and forgets when they are hidden.
void SDLWindow::coverPanels(bool cover) {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (!isThere() || !(SDL_GetWindowFlags(m_Window) & SDL_WINDOW_SHOWN) ||
        !SDL_GetWindowWMInfo(m_Window, &info))
        return;
    Display* const display = info.info.x11.display;
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = info.info.x11.window;
    event.xclient.message_type = XInternAtom(display, "_NET_WM_STATE", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = cover ? 1 : 0; // add, or remove
    event.xclient.data.l[1] = static_cast<long>(XInternAtom(display, "_NET_WM_STATE_FULLSCREEN", False));
    event.xclient.data.l[3] = 1; // asked by an application
    XSendEvent(display, DefaultRootWindow(display), False, SubstructureNotifyMask | SubstructureRedirectMask,
               &event);
    XFlush(display);
}

// SDL's own full screen knows only the displays of its start, so that filling one is a matter of frame and
// style.
void SDLWindow::applyStyle() {
    if (!isThere())
        return;
    const WindowStyle style = fillsDisplay() ? WindowStyle{.bordered = false, .resizable = true} : m_Style;
    SDL_SetWindowBordered(m_Window, style.bordered ? SDL_TRUE : SDL_FALSE);
    SDL_SetWindowResizable(m_Window, style.resizable ? SDL_TRUE : SDL_FALSE);
}

void SDLWindow::setStyle(WindowStyle style) {
    m_Style = style;
    applyStyle();
}

NativeWindow SDLWindow::nativeWindow() const {
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    if (m_Session.hasEnded() || !SDL_GetWindowWMInfo(m_Window, &info))
        return {};
    return NativeWindow::x11(info.info.x11.window);
}

void SDLWindow::noteEnd() {
    m_Ended = true;
    m_Events.windowEnded(*this);
}

void SDLWindow::report(const SDL_WindowEvent& event) {
    switch (event.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
        case SDL_WINDOWEVENT_MOVED:
            m_Events.frameChanged(*this, frame());
            break;
        case SDL_WINDOWEVENT_FOCUS_GAINED:
        case SDL_WINDOWEVENT_FOCUS_LOST:
            m_Events.focusChanged(*this, event.event == SDL_WINDOWEVENT_FOCUS_GAINED);
            break;
        case SDL_WINDOWEVENT_SHOWN:
            if (fillsDisplay()) // what was said of that before may have come too early
                coverPanels(true);
            break;
        case SDL_WINDOWEVENT_CLOSE:
            m_Events.closeAsked(*this);
            break;
        default:
            break;
    }
}

} // namespace vx

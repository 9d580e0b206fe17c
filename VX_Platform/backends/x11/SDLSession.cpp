// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/x11/SDLSession.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <SDL.h>
#include <SDL_syswm.h>

#include <string_view>

namespace vx {

namespace {

bool connectionWasLost = false;

// SDL takes windows and input only, and leaves signals and the screen saver's wishes to the host.
void setHints() {
    SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
    SDL_SetHint(SDL_HINT_VIDEO_ALLOW_SCREENSAVER, "1");
    // Whatever the environment says of SDL's driver: the surfaces are X11's.
    SDL_SetHintWithPriority(SDL_HINT_VIDEODRIVER, "x11", SDL_HINT_OVERRIDE);
    SDL_SetHint(SDL_HINT_MOUSE_FOCUS_CLICKTHROUGH, "1");
    SDL_SetMainReady();
}

bool startVideo() {
    const bool isHosts = SDL_WasInit(SDL_INIT_VIDEO) != 0;
    setHints();
    if (SDL_InitSubSystem(SDL_INIT_VIDEO) != 0)
        return false;
    if (std::string_view(SDL_GetCurrentVideoDriver()) != "x11") {
        SDL_SetError("the host has started SDL on %s", SDL_GetCurrentVideoDriver());
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
        return false;
    }
    // It is on from SDL's start, and an input method may then keep keys.
    if (!isHosts)
        SDL_StopTextInput();
    return true;
}

// SDL tells it of a window only.
::Display* connectionOfSDL() {
    SDL_Window* window = SDL_CreateWindow("", 0, 0, 1, 1, SDL_WINDOW_HIDDEN);
    SDL_SysWMinfo info;
    SDL_VERSION(&info.version);
    const bool told = window && SDL_GetWindowWMInfo(window, &info);
    SDL_DestroyWindow(window);
    return told ? info.info.x11.display : nullptr;
}

} // namespace

std::unique_ptr<SDLSession> SDLSession::start() {
    if (connectionWasLost)
        SDL_SetError("SDL's connection to the X server has ended");
    else if (startVideo()) {
        if (::Display* connection = connectionOfSDL())
            return std::unique_ptr<SDLSession>(new SDLSession(connection));
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
    }
    NSLog("Windows are not available: %s", SDL_GetError());
    return nullptr;
}

SDLSession::SDLSession(::Display* connection)
    : m_Guard(std::make_unique<ConnectionGuard>(connection)), m_Descriptor(ConnectionNumber(connection)) {
    SDL_AddEventWatch(noteEvent, this);
}

SDLSession::~SDLSession() {
    SDL_DelEventWatch(noteEvent, this);
    connectionWasLost = hasEnded() && m_Guard->connection();
    if (connectionWasLost) {
        m_Guard.release(); // for a host that still calls SDL
        return;
    }
    const bool isUsed = m_Guard->connection();
    m_Guard.reset();
    if (isUsed)
        SDL_QuitSubSystem(SDL_INIT_VIDEO);
}

bool SDLSession::hasEnded() const {
    if (!SDL_WasInit(SDL_INIT_VIDEO))
        m_Guard->noteClosed();
    return m_Guard->hasEnded();
}

int SDLSession::noteEvent(void* session, SDL_Event*) {
    static_cast<SDLSession*>(session)->wake();
    return 0;
}

void SDLSession::keepScreenOn(bool keep) {
    if (keep)
        SDL_DisableScreenSaver();
    else
        SDL_EnableScreenSaver();
}

void SDLSession::composeText(bool compose) {
    if (compose)
        SDL_StartTextInput();
    else
        SDL_StopTextInput();
}

void SDLSession::showPointer(bool show) {
    SDL_ShowCursor(show ? SDL_ENABLE : SDL_DISABLE);
}

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/x11/ConnectionGuard.h>
#include <VX_Platform/backends/x11/Waker.h>

#include <memory>

union SDL_Event;

namespace vx {

/// SDL's windows and input on its own connection to the X server, beside a host that may use SDL too. Main
/// thread only, but for `wake`.
class SDLSession {
public:
    /// Null, with a line in the log, where SDL does not start on X11.
    static std::unique_ptr<SDLSession> start();
    /// After the connection's end SDL is left as it is.
    ~SDLSession();

    /// Whether the connection has ended, or a host has ended SDL below us (`SDL_Quit`); SDL's windows must be
    /// left alone from then on.
    bool hasEnded() const;
    /// Waits for input, for an event that anyone gives to SDL, or for `wake`.
    void wait(double seconds) { m_Waker.wait(seconds, hasEnded() ? -1 : m_Descriptor); }
    /// Whether an event or a wake has come since the last call.
    bool takeWake() { return m_Waker.take(); }
    void wake() { m_Waker.wake(); }

    void keepScreenOn(bool keep);
    void composeText(bool compose);
    void showPointer(bool show);

private:
    explicit SDLSession(_XDisplay* connection);
    static int noteEvent(void* session, SDL_Event* event);

    std::unique_ptr<ConnectionGuard> m_Guard;
    Waker m_Waker;
    int m_Descriptor;
};

} // namespace vx

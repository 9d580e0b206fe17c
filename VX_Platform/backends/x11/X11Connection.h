// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Platform.h>
#include <VX_Platform/backends/x11/ConnectionGuard.h>

#include <functional>

struct _XDisplay;
union _XEvent;

namespace vx {

/// The platform's own connection to the X server, beside that of SDL: EGL draws on it, the views' windows are
/// made on it, displays are asked for on it. Any thread, but for `takeEvents`.
class X11Connection {
public:
    /// Null when there is no server.
    static std::unique_ptr<X11Connection> open();
    ~X11Connection();

    _XDisplay* display() const { return m_Display; }
    const ConnectionGuard& guard() const { return *m_Guard; }
    /// Whether the server has ended the connection: nothing is drawn or asked for any more.
    bool hasEnded() const { return m_Guard->hasEnded(); }
    /// The displays that are on, the primary one first; none where the server knows no outputs.
    std::vector<DisplayInfo> displays() const;
    /// The display that shows most of a window.
    DisplayInfo displayOf(unsigned long window) const;
    /// Size and desktop position of a window; false when there is no such window.
    bool frameOf(unsigned long window, CGRect& frame) const;

    /// Hands over what has come: events of windows to `ofWindow`, and whether displays have changed is the
    /// result. Main thread only.
    bool takeEvents(const std::function<void(const _XEvent&)>& ofWindow);

private:
    explicit X11Connection(_XDisplay* display);

    _XDisplay* m_Display;
    std::unique_ptr<ConnectionGuard> m_Guard;
    /// First event of RandR, negative where the server has none.
    int m_DisplayEvents = -1;
};

} // namespace vx

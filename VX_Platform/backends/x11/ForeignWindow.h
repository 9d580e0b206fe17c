// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/x11/X11Connection.h>

namespace vx {

/// The windows that other toolkits own and views have been put into. Their sizes, places and ends are
/// followed; their events stay with those toolkits. Main thread only.
class ForeignWindows {
public:
    ForeignWindows(X11Connection& connection, PlatformEvents& events)
        : m_Connection(connection), m_Events(events) {}

    /// Null, with a line in the log, where there is no such window.
    std::unique_ptr<WindowBackend> adopt(unsigned long window);
    /// Takes in what has happened to one of them.
    void follow(const _XEvent& event);

private:
    class Window;

    Window* find(unsigned long window) const;

    X11Connection& m_Connection;
    PlatformEvents& m_Events;
    std::vector<Window*> m_Windows;
};

} // namespace vx

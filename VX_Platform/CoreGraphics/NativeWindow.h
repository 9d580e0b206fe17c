// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vx {

/// A window as the window system below knows it. The fields are the window system's own and belong to it.
struct NativeWindow {
    /// Window systems.
    enum class Kind {
        none,    ///< there is no window system: handle and display are 0
        x11,     ///< `handle` is the X11 window id
        wayland, ///< `handle` is the address of the `wl_surface`
    };

    /// Of which window system the window is.
    Kind kind = Kind::none;
    /// The connection that the handle belongs to (`Display*`, `wl_display*`); null where any connection to
    /// the same server will do.
    void* display = nullptr;
    /// The window, in the form that the kind names; 0 for none.
    std::uintptr_t handle = 0;

    /// Returns the X11 window of that id, on any connection to the server.
    static NativeWindow x11(unsigned long window) { return {Kind::x11, nullptr, window}; }
    /// Returns whether there is a window.
    explicit operator bool() const { return kind != Kind::none && handle != 0; }
};

} // namespace vx

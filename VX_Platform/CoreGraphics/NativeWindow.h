// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace vx {

/// A window as the window system below knows it. The fields are the window system's own and belong to it.
struct NativeWindow {
    enum class Kind {
        none,    ///< there is no window system: handle and display are 0
        x11,     ///< `handle` is the X11 window id
        wayland, ///< `handle` is the address of the `wl_surface`
    };

    Kind kind = Kind::none;
    /// The connection that the handle belongs to (`Display*`, `wl_display*`); null where any connection to
    /// the same server will do.
    void* display = nullptr;
    std::uintptr_t handle = 0;

    static NativeWindow x11(unsigned long window) { return {Kind::x11, nullptr, window}; }
    explicit operator bool() const { return kind != Kind::none && handle != 0; }
};

} // namespace vx

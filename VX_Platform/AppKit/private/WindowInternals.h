// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/backends/Platform.h>

#include <vector>

/// The side of a window that the platform below it sees.
struct NSWindow::Internals {
    std::shared_ptr<vx::Platform> platform;
    std::unique_ptr<vx::WindowBackend> backend;

    static vx::WindowBackend* backendOf(const NSWindow* window) { return window->m_Internals->backend.get(); }
    // What has happened to the window.
    static void frameChanged(NSWindow* window, CGRect frame);
    static void focusChanged(NSWindow* window, bool key);
    static void displaysChanged(NSWindow* window);
    static void serverEnded(NSWindow* window);
};

namespace vx {

/// The windows there are, retained, for a walk in which a host's code may end any of them.
std::vector<NSRef<NSWindow>> presentWindows();

} // namespace vx

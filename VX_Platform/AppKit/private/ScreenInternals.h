// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/backends/Displays.h>

/// The side of a screen that the platform below it sees.
struct NSScreen::Internals {
    /// Borrowed, autoreleased.
    static NSScreen* screenOf(const vx::DisplayInfo& display);
    /// Where the display is plugged in, valid as long as the screen.
    static const char* outputOf(const NSScreen* screen) { return screen->m_Output.c_str(); }
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/backends/Displays.h>

/// The side of a screen that the platform below it sees.
struct NSScreen::Internals {
    /// Borrowed, autoreleased.
    static NSScreen* screenOf(const vx::DisplayInfo& display);
};

// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSCursor.h>

#include <VX_Platform/AppKit/private/RunningPlatform.h>

namespace {

int hides = 0;

void show(bool shown) {
    if (const auto platform = vx::runningPlatform())
        platform->showPointer(shown);
}

} // namespace

void NSCursor::hide() {
    if (hides++ == 0)
        show(false);
}

void NSCursor::unhide() {
    if (hides > 0 && --hides == 0)
        show(true);
}

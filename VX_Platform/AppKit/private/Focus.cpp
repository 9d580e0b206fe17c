// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/private/Focus.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace vx {

namespace {

struct Focus {
    NSRef<NSImage> image;
    Canvas canvas;
};

std::vector<Focus>& foci() {
    thread_local std::vector<Focus> stack;
    return stack;
}

} // namespace

Canvas& focusedCanvas() {
    thread_local Canvas nowhere;
    return foci().empty() ? nowhere : foci().back().canvas;
}

bool hasFocus() {
    return !foci().empty();
}

void pushFocus(NSImage* image, Canvas canvas) {
    foci().push_back({NSRef<NSImage>::retain(image), std::move(canvas)});
}

void popFocus(NSImage* image) {
    const auto found = std::find_if(foci().rbegin(), foci().rend(),
                                    [&](const Focus& focus) { return focus.image.get() == image; });
    if (found == foci().rend())
        return;
    const Focus ending = std::move(*found); // ends when the stack is in order again
    foci().erase(std::next(found).base());
}

} // namespace vx

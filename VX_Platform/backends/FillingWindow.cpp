// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/FillingWindow.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <algorithm>
#include <utility>

namespace vx {

bool FillingWindow::fillDisplay(const std::string& name) {
    const std::vector<DisplayInfo> present = displays();
    const DisplayInfo* display = displayNamed(present, name);
    if (!display)
        return false;
    if (!m_FillsDisplay)
        m_FrameBefore = frame();
    fill(*display);
    return true;
}

void FillingWindow::fill(const DisplayInfo& display) {
    // A window manager moves no window that covers a display.
    if (std::exchange(m_FillsDisplay, true))
        coverPanels(false);
    m_Output = display.output;
    m_DisplayIsGone = false;
    fillingChanged();
    setFrame(display.bounds);
    coverPanels(true);
}

void FillingWindow::leaveDisplay() {
    if (!std::exchange(m_FillsDisplay, false))
        return;
    coverPanels(false);
    fillingChanged();
    setFrame(m_FrameBefore);
}

// A projector that is off for a moment finds its picture again.
void FillingWindow::displaysChanged() {
    if (!m_FillsDisplay)
        return;
    const std::vector<DisplayInfo> present = displays();
    const auto display = std::ranges::find(present, m_Output, &DisplayInfo::output);
    if (display != present.end()) {
        if (m_DisplayIsGone || !CGRectEqualToRect(display->bounds, frame()))
            fill(*display);
    } else if (!std::exchange(m_DisplayIsGone, true)) {
        NSLog("Display %s is off; the window that fills it goes on drawing and waits for it",
              m_Output.c_str());
    }
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/FillingWindow.h>

#include <utility>

namespace vx {

bool FillingWindow::fillDisplay(const std::string& name) {
    const std::vector<DisplayInfo> present = displays();
    const DisplayInfo* display = displayNamed(present, name);
    if (!display)
        return false;
    if (!m_FillsDisplay)
        m_FrameBefore = frame();
    m_FillsDisplay = true;
    fillingChanged();
    setFrame(display->bounds);
    return true;
}

void FillingWindow::leaveDisplay() {
    if (!std::exchange(m_FillsDisplay, false))
        return;
    fillingChanged();
    setFrame(m_FrameBefore);
}

} // namespace vx

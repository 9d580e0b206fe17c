// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Platform.h>

namespace vx {

/// A window that can cover a display, follows it, and remembers where it was before.
class FillingWindow : public WindowBackend {
public:
    bool fillDisplay(const std::string& display) final;
    void leaveDisplay() final;
    void displaysChanged() final;

protected:
    virtual std::vector<DisplayInfo> displays() const = 0;
    /// The border goes, or comes back.
    virtual void fillingChanged() {}
    /// Where a window manager is, it leaves the window the whole display, its panels' part too, or no longer.
    virtual void coverPanels(bool) {}
    bool fillsDisplay() const { return m_FillsDisplay; }

private:
    void fill(const DisplayInfo& display);

    CGRect m_FrameBefore;
    std::string m_Output;
    bool m_FillsDisplay = false;
    bool m_DisplayIsGone = false;
};

} // namespace vx

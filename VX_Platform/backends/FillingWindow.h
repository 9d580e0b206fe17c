// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Platform.h>

namespace vx {

/// A window that can cover a display and remembers where it was before.
class FillingWindow : public WindowBackend {
public:
    bool fillDisplay(const std::string& display) final;
    void leaveDisplay() final;

protected:
    virtual std::vector<DisplayInfo> displays() const = 0;
    /// The border goes, or comes back.
    virtual void fillingChanged() {}
    bool fillsDisplay() const { return m_FillsDisplay; }

private:
    CGRect m_FrameBefore;
    bool m_FillsDisplay = false;
};

} // namespace vx

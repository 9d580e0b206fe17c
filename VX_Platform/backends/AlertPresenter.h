// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <string>
#include <vector>

namespace vx {

struct AlertButton {
    std::string label;
    /// What the alert returns when this button ends it.
    int result;
};

/// What an alert shows, in UTF-8. The first button is the default one; there is at least that.
struct AlertContents {
    std::string title;
    std::string message;
    std::string informativeText;
    std::vector<AlertButton> buttons;
};

/// Set by a platform on which nobody can press a button: alerts then become a line in the log.
extern std::atomic<bool> alertsGoToLog;

/// Shows the alert and blocks the calling thread, and no other, until a button is pressed. Returns that
/// button's result. In the log, by choice or because no window can be had, it is the default button's at
/// once. Any thread.
int presentAlert(const AlertContents& contents);

} // namespace vx

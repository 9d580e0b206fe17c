// SPDX-License-Identifier: MIT
#pragma once

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

/// Where nobody can press a button: the texts become one line in the log, and the default button's result is
/// returned at once. Any thread.
int logAlert(const AlertContents& contents);

} // namespace vx

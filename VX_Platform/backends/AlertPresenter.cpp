// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/AlertPresenter.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/backends/x11/X11AlertWindow.h>

#include <algorithm>

namespace vx {

std::atomic<bool> alertsGoToLog{false};

namespace {

int logAlert(const AlertContents& contents) {
    const AlertButton& button = contents.buttons.front();
    std::string text = contents.message;
    if (!contents.informativeText.empty())
        text += ": " + contents.informativeText;
    std::replace(text.begin(), text.end(), '\n', ' ');
    NSLog("%s [%s]", text.c_str(), button.label.c_str());
    return button.result;
}

} // namespace

int presentAlert(const AlertContents& contents) {
    if (!alertsGoToLog) {
        if (const std::optional<int> result = runX11AlertWindow(contents))
            return *result;
    }
    return logAlert(contents);
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/Alert.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <algorithm>

namespace vx {

int logAlert(const AlertContents& contents) {
    const AlertButton& button = contents.buttons.front();
    std::string text = contents.message;
    if (!contents.informativeText.empty())
        text += ": " + contents.informativeText;
    std::replace(text.begin(), text.end(), '\n', ' ');
    NSLog("%s [%s]", text.c_str(), button.label.c_str());
    return button.result;
}

} // namespace vx

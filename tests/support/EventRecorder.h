// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/PlatformEvents.h>

#include <cstdio>
#include <map>
#include <string>
#include <utility>

namespace vx::test {

/// Writes down what a platform tells of windows, which a test gives names, and of displays.
class EventRecorder : public PlatformEvents {
public:
    std::map<const WindowBackend*, std::string> names;

    std::string take() { return std::exchange(m_Told, {}); }

    void frameChanged(WindowBackend& window, CGRect frame) override {
        char text[100];
        std::snprintf(text, sizeof text, "%g,%g %gx%g", frame.origin.x, frame.origin.y, frame.size.width,
                      frame.size.height);
        note(window, text);
    }
    void focusChanged(WindowBackend& window, bool key) override { note(window, key ? "key" : "not key"); }
    void closeAsked(WindowBackend& window) override { note(window, "close"); }
    void windowEnded(WindowBackend& window) override { note(window, "ended"); }
    void input(WindowBackend& window, const InputEvent&) override { note(window, "input"); }
    void displaysChanged() override { m_Told += "displays; "; }

private:
    void note(const WindowBackend& window, const std::string& what) {
        m_Told += names[&window] + " " + what + "; ";
    }

    std::string m_Told;
};

} // namespace vx::test

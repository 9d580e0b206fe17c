// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLHost.h>
#include <VX_OpenGL64/output/VX_GLFilledScreenWindow.h>

#include <functional>
#include <string>

class NSScreen;

/// Takes a host's view to a display, which it then fills, and back into its window.
class Output {
public:
    /// `keys` sees the events of the window on the display as well.
    Output(VX_GLHost& host, NSWindow::EventHandler keys);
    /// May come after the host's end, and with the view still out.
    ~Output();
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    void moveTo(const NSScreen* display);
    void goBack();
    bool isOut() const { return m_IsOut; }

private:
    void makeWindow(CGRect frame);

    VX_GLMainView* m_View;
    NSRef<NSWindow> m_Home;
    NSWindow::EventHandler m_Keys;
    NSRef<VX_GLFilledScreenWindow> m_Window;
    bool m_IsOut = false;
};

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <VX_OpenGL64/host/private/MainViewInternals.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSTimer.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>

bool VX_GLMainView::IsShown() const {
    return window() && window()->isVisible();
}

// After a second, since a host may put its view into the window and show that in any order.
void VX_GLMainView::Internals::tellIfNeverShown(VX_GLMainView* view) {
    if (!VX_GetDiagnostics())
        return;
    self = std::make_shared<VX_GLMainView*>(view);
    const std::weak_ptr<VX_GLMainView*> weak = self;
    const auto tell = [weak](NSTimer*) {
        const auto held = weak.lock();
        if (!held || (*held)->IsShown() || (*held)->GetDrawnFrames() > 0)
            return;
        NSLog((*held)->window()
                  ? "VX_GLMainView: view %p draws nothing: it is in a window that was never shown "
                    "(NSWindow::makeKeyAndOrderFront)"
                  : "VX_GLMainView: view %p draws nothing: it is in no window "
                    "(NSWindow::setContentView)",
              static_cast<void*>(*held));
    };
    NSTimer::scheduledTimerWithTimeInterval(1.0, tell, false);
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <X11/Xlib.h> // behind the others: its macros take common words

class GreenPipeline : public VX_GLRenderpipeline {
    void renderPipeline(CGRect*) override {
        glClearColor(0.2f, 0.6f, 0.3f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
};

int main() {
    Display* display = XOpenDisplay(nullptr);
    if (!display)
        return 1;
    const Window outer = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 640, 360, 0, 0, 0);
    XSelectInput(display, outer, KeyPressMask);
    XMapWindow(display, outer);
    XSync(display, False); // the view comes by a connection of its own, and the window must be there

    const auto pipeline = NSInit(new GreenPipeline);
    auto host = VX_GLHost::open(pipeline.get(), {.inside = vx::NativeWindow::x11(outer)});
    for (bool open = host != nullptr; open && !host->window()->isClosed();) {
        while (XPending(display)) {
            XEvent event;
            XNextEvent(display, &event);
            open = open && event.type != KeyPress; // the input stays the owner's
        }
        NSApplication::sharedApplication()->runStep(0.01); // ours: resizes, timers, notifications
    }
    host.reset(); // ahead of the window
    XCloseDisplay(display);
}

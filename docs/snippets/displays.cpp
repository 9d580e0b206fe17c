// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

class TwoPictures : public VX_GLRenderpipeline {
    void renderPipeline(CGRect*) override { fill(0.1f, 0.4f, 0.6f); }
    void renderSubPipeline(CGRect*, VX_GLSharedView*) override { fill(0.6f, 0.4f, 0.1f); }
    void fill(float red, float green, float blue) {
        glClearColor(red, green, blue, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
};

int main() {
    const auto pipeline = NSInit(new TwoPictures);
    auto host = VX_GLHost::open(pipeline.get());
    if (!host)
        return 1;
    VX_GLMainView* view = host->view();

    // A further view, in a window of its own.
    const CGRect frame = CGRectMake(800, 100, 320, 180);
    const auto window = NSInit(new NSWindow, frame, NSTitledWindowMask);
    const auto child = NSInit(new VX_GLSharedView, frame, nullptr);
    child->setRenderpipeline(pipeline.get());
    view->addChildSharedView(child.get());
    window->setContentView(child.get());
    window->makeKeyAndOrderFront();

    // F takes the picture to the primary display, B brings it back.
    NSScreen* screen = NSScreen::mainScreen();
    auto full = NSInit(new VX_GLFilledScreenWindow, screen->frame(), NSBorderlessWindowMask);
    const auto keys = [&](NSEvent* event) {
        const unsigned key = event->type() == NSKeyDown ? event->key() : 0;
        if (key == 'f' && !full->isVisible()) {
            if (!full->MainGLView())
                view->retain(); // for `full`, which releases it at its end
            full->attachGLViewWithPixelFormat(view, view->GetPixelFormatAttributes(), pipeline.get());
            full->makeKeyAndOrderFront();
        } else if (key == 'b' && full->isVisible()) {
            full->detachGLViewWithPixelFormat(view->GetPixelFormatAttributes());
            host->window()->makeKeyAndOrderFront(); // the keyboard comes back as well
        }
        return key != 0;
    };
    for (NSWindow* each : {host->window(), window.get(), static_cast<NSWindow*>(full.get())})
        each->setEventHandler(keys);
    host->run();
    if (full->MainGLView())
        pipeline->autorelease(); // the view's reference to it, which the end of `full` leaves to the host
    full = nullptr;
}

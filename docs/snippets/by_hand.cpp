// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

class BluePipeline : public VX_GLRenderpipeline {
    void renderPipeline(CGRect*) override {
        glClearColor(0.1f, 0.3f, 0.6f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
    }
};

class Window : public NSWindow {
    void mouseDown(NSEvent*) override { performClose(); }
};

int main() {
    // The window starts the platform, if nothing did before.
    const CGRect frame = CGRectMake(100, 100, 640, 360);
    const auto window = NSInit(new Window, frame, NSTitledWindowMask | NSResizableWindowMask);
    if (!window)
        return 1;
    const auto view = NSInit(new VX_GLMainView, frame, nullptr);
    const auto pipeline = NSInit(new BluePipeline);
    pipeline->setTargetGLView(view.get());
    window->setTitle("By hand");
    window->setContentView(view.get());
    window->makeKeyAndOrderFront();

    view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    if (!view->initializationWithPixelFormat(pipeline.get(), view->GetPixelFormatAttributes()))
        return 1;

    NSApplication::sharedApplication()->run(); // doStartRender in its first step, then frame after frame
    view->stopRender();                        // doStopRender; the context is current here from now on
    view->releaseResources();
}

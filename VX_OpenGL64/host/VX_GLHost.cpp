// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLHost.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>

#include <cstdio>
#include <string>

namespace {

class HostWindow : public NSWindow {
public:
    bool closesOnEscape = true;

    void keyDown(NSEvent* event) override {
        if (closesOnEscape && event->key() == NSEscapeKey)
            performClose();
    }
};

bool choosePlatform(const VX_GLHostOptions& options) {
    if (!options.headless && !options.platform)
        return true;
    return NSApplication::usePlatform(options.headless ? "headless" : options.platform);
}

void gatherPixelFormat(VX_GLMainView* view, const VX_GLHostOptions& options) {
    view->ResetPixelFormatAttributes();
    view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
    view->AddPixelFormatAttribute(NSOpenGLPFAColorSize, static_cast<std::uint32_t>(options.colorSize));
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, static_cast<std::uint32_t>(options.depthSize));
    if (options.samples > 0)
        view->AddPixelFormatAttribute(NSOpenGLPFASamples, static_cast<std::uint32_t>(options.samples));
}

} // namespace

std::unique_ptr<VX_GLHost> VX_GLHost::open(VX_GLRenderpipeline* pipeline, const VX_GLHostOptions& options) {
    std::unique_ptr<VX_GLHost> host(new VX_GLHost);
    if (!pipeline)
        NSLog("VX_GLHost::open: there is no pipeline");
    else if (choosePlatform(options) && host->start(pipeline, options))
        return host;
    return nullptr;
}

bool VX_GLHost::makeWindow(const VX_GLHostOptions& options) {
    if (options.inside) {
        m_Window = NSRef<NSWindow>::adopt((new NSWindow)->initWithNativeWindow(options.inside));
        return m_Window.get() != nullptr;
    }
    const CGRect frame = CGRectMake(options.x, options.y, options.width, options.height);
    const unsigned style =
        NSTitledWindowMask | NSClosableWindowMask | (options.resizable ? NSResizableWindowMask : 0u);
    const NSRef<HostWindow> window = NSInit(new HostWindow, frame, style);
    if (!window)
        return false;
    window->closesOnEscape = options.closesOnEscape;
    window->setTitle(options.title);
    m_Window = NSRef<NSWindow>::retain(window.get());
    return true;
}

bool VX_GLHost::start(VX_GLRenderpipeline* pipeline, const VX_GLHostOptions& options) {
    if (!makeWindow(options))
        return false;
    m_View = NSInit(new VX_GLMainView, m_Window->frame(), nullptr);
    m_Window->setContentView(m_View.get());
    m_View->SetFollowsSize(true);
    m_View->SetStepped(options.stepped);
    return attach(pipeline, options);
}

bool VX_GLHost::attach(VX_GLRenderpipeline* pipeline, const VX_GLHostOptions& options) {
    pipeline->setTargetGLView(m_View.get());
    gatherPixelFormat(m_View.get(), options);
    const std::uint32_t* format =
        options.pixelFormat ? options.pixelFormat : m_View->GetPixelFormatAttributes();
    if (!m_View->initializationWithPixelFormat(pipeline, format))
        return false;
    m_Window->makeKeyAndOrderFront();
    return true;
}

VX_GLHost::~VX_GLHost() {
    if (!m_View)
        return;
    m_View->stopRender();
    if (VX_GLRenderpipeline* pipeline = m_View->renderpipeline())
        pipeline->setTargetGLView(nullptr);
    m_View->releaseResources();
    m_Window->close();
}

int VX_GLHost::run() {
    if (!m_Window->isClosed())
        NSApplication::sharedApplication()->run();
    return 0;
}

bool VX_GLHost::record(const char* folder, int first, int last, double framesPerSecond) {
    // The display pass prepares the view.
    NSApplication::sharedApplication()->runStep(0.0);
    for (int i = first; i <= last; ++i) {
        char name[32];
        std::snprintf(name, sizeof name, "/frame_%05d.png", i);
        if (!m_View->StepFrame(i / framesPerSecond, (folder + std::string(name)).c_str()))
            return false;
        NSApplication::sharedApplication()->runStep(0.0);
    }
    return true;
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLHost.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSEvent.h>
#include <VX_Platform/AppKit/NSView.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <VX_Platform/OpenGL/private/FormerContext.h>

#include <algorithm>
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

// Keeps the views in it off the edges.
class MarginView : public NSView {
public:
    explicit MarginView(VX_GLHostMargins margins) : m_Margins(margins) {}

    CGRect inner() const {
        const CGSize size = frame().size;
        return CGRectMake(m_Margins.left, m_Margins.top,
                          std::max(1.0, size.width - m_Margins.left - m_Margins.right),
                          std::max(1.0, size.height - m_Margins.top - m_Margins.bottom));
    }
    void frameDidChange() override {
        for (const NSRef<NSView>& view : subviews())
            view->setFrame(inner());
    }

private:
    VX_GLHostMargins m_Margins;
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
    const vx::FormerContext former;
    if (!pipeline)
        NSLog("VX_GLHost::open: there is no pipeline");
    if (!pipeline || !choosePlatform(options) || !host->start(pipeline, options))
        host.reset();
    former.restore(); // a host with GL of its own goes on with it
    return host;
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
    m_Window = window;
    return true;
}

bool VX_GLHost::start(VX_GLRenderpipeline* pipeline, const VX_GLHostOptions& options) {
    if (!makeWindow(options))
        return false;
    m_View = NSInit(new VX_GLMainView, m_Window->frame(), nullptr);
    placeView(options.margins);
    m_View->SetFollowsSize(true);
    m_View->SetStepped(options.stepped);
    return attach(pipeline, options);
}

void VX_GLHost::placeView(const VX_GLHostMargins& margins) {
    if (!(margins.left || margins.top || margins.right || margins.bottom))
        return m_Window->setContentView(m_View.get());
    const auto content = NSInit(new MarginView(margins), CGRect{});
    m_Window->setContentView(content.get());
    m_View->setFrame(content->inner());
    content->addSubview(m_View.get());
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

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_GLFilledScreenWindow.h>

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_Platform/AppKit/NSScreen.h>

namespace {

/// What it named, kept for as long as this is at work; null where that has ended.
template <class T>
NSRef<T> present(const std::weak_ptr<NSResponder>& former) {
    return NSRef<T>::retain(static_cast<T*>(former.lock().get()));
}

void endContext(VX_GLMainView* view) {
    const auto pipeline = NSRef<VX_GLRenderpipeline>::retain(view->renderpipeline());
    if (view->existingOpenGLContext())
        view->makeCurrentContext();
    if (pipeline)
        pipeline->doStopRender();
    view->releaseResources();
}

} // namespace

VX_GLFilledScreenWindow::VX_GLFilledScreenWindow() = default;
VX_GLFilledScreenWindow::~VX_GLFilledScreenWindow() = default;

void VX_GLFilledScreenWindow::dealloc() {
    releaseResources();
    NSWindow::dealloc();
}

VX_GLMainView* VX_GLFilledScreenWindow::MainGLView() const {
    return static_cast<VX_GLMainView*>(m_TargetGLView.lock().get());
}

void VX_GLFilledScreenWindow::attachGLViewWithPixelFormat(VX_GLMainView* view,
                                                          const std::uint32_t* attributes,
                                                          VX_GLRenderpipeline* pipeline) {
    const auto keep = NSRef<VX_GLMainView>::retain(view);
    keepPlaceOf(view);
    coverDisplayUnder();
    const CGRect content = contentRectForFrameRect(frame());
    if (view) {
        // The display link would go on with a context that is about to end.
        view->stopRenderThread();
        endContext(view);
        view->removeFromSuperview();
    }
    setContentView(view);
    if (!view)
        return;
    view->setFrame({{}, content.size});
    view->initializationWithPixelFormat(pipeline, attributes);
}

void VX_GLFilledScreenWindow::keepPlaceOf(VX_GLMainView* view) {
    NSView* const parent = view ? view->superview() : nullptr;
    NSWindow* const window = view && !parent ? view->window() : nullptr;
    m_PrevSuperView = parent ? parent->weak() : std::weak_ptr<NSResponder>();
    m_PrevWindow = window ? window->weak() : std::weak_ptr<NSResponder>();
    m_PrevBounds = view ? view->frame() : CGRect();
    m_TargetGLView = view ? view->weak() : std::weak_ptr<NSResponder>();
}

void VX_GLFilledScreenWindow::coverDisplayUnder() {
    NSScreen* const under = screen();
    if (under && CGRectEqualToRect(under->frame(), frame()))
        fillDisplay(under);
}

void VX_GLFilledScreenWindow::detachGLViewWithPixelFormat(const std::uint32_t* attributes) {
    const auto view = present<VX_GLMainView>(m_TargetGLView);
    if (view)
        view->stopRenderThread();
    close();
    leaveDisplay();
    if (!view)
        return;
    endContext(view.get());
    setContentView(nullptr);
    putBack(view.get());
    view->setFrame(m_PrevBounds);
    view->initializationWithPixelFormat(view->renderpipeline(), attributes);
}

void VX_GLFilledScreenWindow::putBack(VX_GLMainView* view) {
    if (const auto parent = present<NSView>(m_PrevSuperView))
        parent->addSubview(view);
    else if (const auto window = present<NSWindow>(m_PrevWindow))
        window->setContentView(view);
}

void VX_GLFilledScreenWindow::releaseResources() {
    const auto view = present<VX_GLMainView>(m_TargetGLView);
    m_TargetGLView.reset();
    if (!view)
        return;
    view->stopRender();
    view->detachRenderpipeline();
    view->releaseResources();
    view->removeFromSuperview();
    view->release(); // the reference that the host has handed over
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/NSOpenGLView.h>

#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/AppKit/private/RunningPlatform.h>

NSOpenGLView* NSOpenGLView::initWithFrame(CGRect frame) {
    return initWithFrame(frame, nullptr);
}

NSOpenGLView* NSOpenGLView::initWithFrame(CGRect frame, NSOpenGLPixelFormat* format) {
    if (!NSView::initWithFrame(frame))
        return nullptr;
    setPixelFormat(format);
    return this;
}

void NSOpenGLView::dealloc() {
    clearGLContext();
    setPixelFormat(nullptr);
    NSView::dealloc();
}

void NSOpenGLView::setPixelFormat(NSOpenGLPixelFormat* format) {
    m_PixelFormat = NSRef<NSOpenGLPixelFormat>::retain(format);
}

NSOpenGLContext* NSOpenGLView::openGLContext() {
    if (!m_Context && m_PixelFormat) {
        m_Context = NSRef<NSOpenGLContext>::adopt(
            (new NSOpenGLContext)->initWithFormat(m_PixelFormat.get(), nullptr));
        m_Prepared = false;
        if (m_Context)
            m_Context->setView(this);
    }
    return m_Context.get();
}

void NSOpenGLView::setOpenGLContext(NSOpenGLContext* context) {
    if (context == m_Context.get())
        return;
    if (m_Context && m_Context->view() == this)
        m_Context->setView(nullptr);
    m_Context = NSRef<NSOpenGLContext>::retain(context);
    m_Prepared = false;
}

void NSOpenGLView::clearGLContext() {
    if (!m_Context)
        return;
    m_Context->clearDrawable();
    if (NSOpenGLContext::currentContext() == m_Context.get())
        NSOpenGLContext::clearCurrentContext();
    setOpenGLContext(nullptr);
}

void NSOpenGLView::update() {
    if (m_Context)
        m_Context->update();
}

void NSOpenGLView::display() {
    const NSRef<NSOpenGLView> keep = NSRef<NSOpenGLView>::retain(this);
    if (!canHaveSurface() || !window() || !window()->isVisible() || !openGLContext())
        return;
    if (!m_Prepared) {
        // A context that another thread keeps is asked for again in the next display pass.
        if (!m_Context->makeCurrentContext())
            return;
        m_Prepared = true;
        setNeedsDisplay(false);
        prepareOpenGL();
    }
    setNeedsDisplay(false);
    drawRect(bounds());
}

void NSOpenGLView::viewDidMoveToWindow() {
    // The old window may be gone in a moment, so this is not left to the next frame.
    if (m_Context)
        m_Context->setView(this);
    setNeedsDisplay(true);
}

void NSOpenGLView::frameDidChange() {
    update();
}

void NSOpenGLView::displayDidChange() {
    if (m_Context)
        m_Context->noteDisplay();
}

bool NSOpenGLView::canHaveSurface() const {
    if (window())
        return true;
    const auto platform = vx::runningPlatform();
    return platform && platform->drawsWithoutWindow();
}

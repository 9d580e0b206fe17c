// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLSharedView.h>

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/host/private/SampledSize.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <utility>

VX_GLSharedView::VX_GLSharedView() = default;
VX_GLSharedView::~VX_GLSharedView() = default;

VX_GLSharedView* VX_GLSharedView::initWithFrame(CGRect frame, NSOpenGLPixelFormat* format) {
    if (!NSOpenGLView::initWithFrame(frame, format))
        return nullptr;
    m_SwapIntervalEnable = false;
    return this;
}

void VX_GLSharedView::dealloc() {
    releaseResources();
    m_UserProperties = nullptr;
    m_Lock = nullptr;
    NSOpenGLView::dealloc();
}

void VX_GLSharedView::setRenderpipeline(VX_GLRenderpipeline* pipeline) {
    m_TargetRenderpipeline = pipeline;
    if (!m_UserProperties)
        m_UserProperties = NSInit(new NSMutableDictionary);
}

void VX_GLSharedView::initialization(VX_GLMainView* owner) {
    if (!m_Lock)
        m_Lock = NSInit(new NSRecursiveLock);
    m_AwaitsContext = true;
    releaseResources();
    m_OwnerView = NSRef<VX_GLMainView>::retain(owner);
    setPixelFormat(owner ? owner->pixelFormat() : nullptr);
    NSOpenGLContext* const shared = owner ? owner->openGLContext() : nullptr;
    if (!shared)
        return;
    const auto context =
        NSRef<NSOpenGLContext>::adopt((new NSOpenGLContext)->initWithFormat(pixelFormat(), shared));
    if (!context)
        return;
    setOpenGLContext(context.get());
    context->setView(this);
    context->makeCurrentContext();
    setContext(context);
    m_AwaitsContext = false;
    setNeedsDisplay(true);
}

void VX_GLSharedView::prepareOpenGL() {
    const NSRef<VX_GLMainView> owner = m_OwnerView;
    if (owner)
        owner->RenderThreadLock();
    vx::sampleSize(bounds(), m_Width, m_Height);
    NSOpenGLContext* const context = openGLContext();
    if (context && context->makeCurrentContext()) {
        const int retraces = m_SwapIntervalEnable ? 1 : 0;
        context->setValues(&retraces, NSOpenGLCPSwapInterval);
        glViewport(0, 0, static_cast<int>(m_Width), static_cast<int>(m_Height));
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        context->flushBuffer();
    }
    if (owner)
        owner->RenderThreadUnLock();
}

void VX_GLSharedView::SetFollowsSize(bool follows) {
    m_FollowsSize = follows;
    update();
}

void VX_GLSharedView::update() {
    if (m_FollowsSize)
        NSOpenGLView::update();
}

void VX_GLSharedView::setContext(NSRef<NSOpenGLContext> context) {
    const std::lock_guard guard(m_ContextGuard);
    std::swap(m_GLContext, context);
}

NSRef<NSOpenGLContext> VX_GLSharedView::context() const {
    const std::lock_guard guard(m_ContextGuard);
    return m_GLContext;
}

void VX_GLSharedView::callBackRender() {
    const NSRef<VX_GLSharedView> keep = NSRef<VX_GLSharedView>::retain(this); // the hook may end it
    const auto pool = NSInit(new NSAutoreleasePool);
    const NSRef<NSOpenGLContext> own = context();
    // Waiting would hold up the main view, whose lock may be what the other thread waits for.
    if (own ? !own->tryMakeCurrentContext() : m_AwaitsContext.load())
        return;
    if (own && m_FollowsSize)
        vx::takeSize(own->drawableSize(), m_Width, m_Height);
    CGRect area = CGRectMake(0.0, 0.0, m_Width, m_Height);
    if (m_TargetRenderpipeline)
        m_TargetRenderpipeline->renderSubPipeline(&area, this);
    if (own)
        own->flushBuffer();
}

void VX_GLSharedView::releaseResources() {
    setOpenGLContext(nullptr);
    if (const NSRef<NSOpenGLContext> former = context())
        former->clearDrawable();
    setContext(nullptr);
    m_OwnerView = nullptr;
    clearGLContext();
}

void VX_GLSharedView::setObject(NSObject* object, NSString* key) {
    if (m_UserProperties)
        m_UserProperties->setObject(object, key);
}

NSObject* VX_GLSharedView::objectForKey(NSString* key) const {
    return m_UserProperties ? m_UserProperties->objectForKey(key) : nullptr;
}

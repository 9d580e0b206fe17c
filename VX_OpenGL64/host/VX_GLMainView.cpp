// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <VX_OpenGL64/host/VX_GLChildView.h>
#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <VX_OpenGL64/host/private/MainViewInternals.h>
#include <VX_OpenGL64/host/private/SampledSize.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/CoreImage/CIContext.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSNotificationQueue.h>
#include <VX_Platform/Foundation/private/Clock.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>

#include <epoxy/gl.h>

#include <cstdlib>
#include <exception>
#include <new>
#include <utility>

namespace {

// A list is closed by one word.
constexpr int kLastAttribute = 63;

// A hook that fails must not keep its view from stopping.
template <class Hook>
void goOnAfter(const Hook& hook) {
    try {
        hook();
    } catch (const std::exception& failure) {
        NSLog("A hook failed while its view stopped: %s", failure.what());
    } catch (...) {
        NSLog("A hook failed while its view stopped: an exception without a text");
    }
}

} // namespace

VX_GLMainView::VX_GLMainView() : m_Internals(std::make_unique<Internals>()) {}
VX_GLMainView::~VX_GLMainView() = default;

VX_GLMainView* VX_GLMainView::initWithFrame(CGRect frame, NSOpenGLPixelFormat* format) {
    if (!NSOpenGLView::initWithFrame(frame, format))
        return nullptr;
    setWantsBestResolutionOpenGLSurface(false);
    m_RenderThreadLock = NSInit(new NSRecursiveLock);
    void* storage = std::malloc(sizeof(_VX_GLMainViewCallbackContext));
    if (!storage)
        throw std::bad_alloc();
    m_cbCtx = new (storage) _VX_GLMainViewCallbackContext{};
    m_cbCtx->MainView = this;
    return this;
}

void VX_GLMainView::dealloc() {
    NSNotificationCenter::defaultCenter()->removeObserver(this);
    if (m_DisplayLink) {
        NSLog("VX_GLMainView::dealloc: view %p was still drawing; call stopRender and releaseResources first",
              static_cast<void*>(this));
        CVDisplayLinkRelease(m_DisplayLink);
        m_DisplayLink = nullptr;
    }
    if (m_cbCtx) // else it has never been set up
        endPipeline();
    m_RenderThreadLock = nullptr;
    std::free(m_cbCtx);
    m_cbCtx = nullptr;
    NSOpenGLView::dealloc();
}

void VX_GLMainView::endPipeline() {
    const OthersContext others(this);
    if (m_TargetRenderpipeline && m_TargetRenderpipeline->targetGLView() == this)
        m_TargetRenderpipeline->setTargetGLView(nullptr);
    makeExistingContextCurrent();
    m_TargetRenderpipeline = nullptr;
    m_ChildSharedViews = nullptr;
}

void VX_GLMainView::releaseResources() {
    const NSRef<VX_GLMainView> keep = NSRef<VX_GLMainView>::retain(this); // a hook may end it
    const OthersContext others(this);
    const Exclusive exclusive(this);
    endFrame();
    // The view registers no such observer; a subclass that does is freed of it here.
    NSNotificationCenter::defaultCenter()->removeObserver(this, NSWindowDidMoveNotification, nullptr);
    forEachChild([](VX_GLChildView* child) { child->releaseResources(); });
    makeExistingContextCurrent();
    detachPipelineFromContext();
    m_ciContext = nullptr;
    setFrameContext(nullptr);
    clearGLContext();
}

void VX_GLMainView::ResetPixelFormatAttributes() {
    m_PixelFormatAttributeIndex = 0;
    m_PixelFormatAttributes[0] = 0;
}

void VX_GLMainView::AddPixelFormatAttribute(std::uint32_t word) {
    if (m_PixelFormatAttributeIndex < kLastAttribute)
        m_PixelFormatAttributes[m_PixelFormatAttributeIndex++] = word;
}

void VX_GLMainView::AddPixelFormatAttribute(std::uint32_t attribute, std::uint32_t value) {
    if (m_PixelFormatAttributeIndex + 2 > kLastAttribute)
        return;
    AddPixelFormatAttribute(attribute);
    AddPixelFormatAttribute(value);
}

const std::uint32_t* VX_GLMainView::GetPixelFormatAttributes() {
    m_PixelFormatAttributes[m_PixelFormatAttributeIndex] = 0;
    m_PixelFormatAttributes[m_PixelFormatAttributeIndex + 1] = 0;
    return m_PixelFormatAttributes;
}

bool VX_GLMainView::initializationWithPixelFormat(VX_GLRenderpipeline* pipeline,
                                                  const std::uint32_t* attributes) {
    const NSRef<VX_GLMainView> keep = NSRef<VX_GLMainView>::retain(this); // a hook may end it
    const Exclusive exclusive(this);
    if (!m_ChildSharedViews)
        m_ChildSharedViews = NSInit(new NSMutableArray);
    releaseResources();
    setPipeline(pipeline);
    if (!pipeline)
        return false;
    const auto format =
        NSRef<NSOpenGLPixelFormat>::adopt((new NSOpenGLPixelFormat)->initWithAttributes(attributes));
    if (!format)
        return false;
    setPixelFormat(format.get());
    if (!openGLContext())
        return false;
    openGLContext()->makeCurrentContext();
    setNeedsDisplay(true);
    m_Internals->tellIfNeverShown(this);
    return true;
}

void VX_GLMainView::setPipeline(VX_GLRenderpipeline* pipeline) {
    // Let go behind the lock: its end may run a host's code.
    NSRef<VX_GLRenderpipeline> former = NSRef<VX_GLRenderpipeline>::retain(pipeline);
    std::lock_guard guard(m_FrameObjectsLock);
    std::swap(m_TargetRenderpipeline, former);
}

void VX_GLMainView::detachRenderpipeline() {
    std::lock_guard guard(m_FrameObjectsLock);
    if (m_TargetRenderpipeline)
        m_TargetRenderpipeline->retain(); // the caller's from now on
    m_TargetRenderpipeline = nullptr;
}

void VX_GLMainView::makeImageContext() {
    m_ciContext = NSRef<CIContext>::retain(CIContext::contextWithCGLContext(openGLContext()));
}

void VX_GLMainView::prepareOpenGL() {
    const NSRef<VX_GLMainView> keep = NSRef<VX_GLMainView>::retain(this); // a hook may end it
    const Hold hold(this);
    vx::sampleSize(bounds(), m_Width, m_Height);
    NSOpenGLContext* context = openGLContext();
    if (!context)
        return;
    if (m_NeedCIContext)
        makeImageContext();
    setFrameContext(context);
    if (!context->makeCurrentContext())
        return;
    if (vx::currentGLCapabilities().clipVolumeHint)
        glHint(GL_CLIP_VOLUME_CLIPPING_HINT_EXT, GL_FASTEST);
    glHint(GL_PERSPECTIVE_CORRECTION_HINT, GL_NICEST);
    const int everyRetrace = 1;
    context->setValues(&everyRetrace, NSOpenGLCPSwapInterval);
    forEachChild([this](VX_GLChildView* child) { child->initialization(this); });
    startRender();
    NSNotificationQueue::defaultQueue()->enqueueNotification(
        NSNotification::notificationWithName(VX_GLMainView_PreparedOpenGLNotification, this), NSPostASAP);
}

void VX_GLMainView::forEachChild(const std::function<void(VX_GLChildView*)>& visit) {
    if (!m_ChildSharedViews)
        return;
    for (NSObject* child : m_ChildSharedViews->objects())
        if (auto* view = dynamic_cast<VX_GLChildView*>(child))
            visit(view);
}

void VX_GLMainView::initChildShardedViews() {
    makeCurrentContext();
    forEachChild([this](VX_GLChildView* child) { child->initialization(this); });
}

void VX_GLMainView::addChildSharedView(VX_GLChildView* view) {
    auto* const object = dynamic_cast<NSObject*>(view);
    if (!object) {
        NSLog(view ? "VX_GLMainView::addChildSharedView: the child is no NSObject"
                   : "VX_GLMainView::addChildSharedView: there is no child");
        return;
    }
    if (!m_ChildSharedViews)
        m_ChildSharedViews = NSInit(new NSMutableArray);
    m_ChildSharedViews->addObject(object);
}

void VX_GLMainView::removeAllChildSharedViews() {
    if (m_ChildSharedViews)
        m_ChildSharedViews->removeAllObjects();
}

bool VX_GLMainView::startRender() {
    const NSRef<VX_GLMainView> keep = NSRef<VX_GLMainView>::retain(this); // a hook may end it
    const Hold hold(this);
    NSOpenGLContext* context = openGLContext();
    // The hooks of a frame must not run for a pipeline that has not been started.
    if (context && !context->makeCurrentContext())
        return true;
    if (context) {
        clearToBlack();
        context->flushBuffer();
        if (m_TargetRenderpipeline) {
            m_TargetRenderpipeline->attachGLContext(context, pixelFormat());
            m_TargetRenderpipeline->doStartRender();
        }
    }
    startRenderThread();
    return true;
}

void VX_GLMainView::stopRender() {
    const NSRef<VX_GLMainView> keep = NSRef<VX_GLMainView>::retain(this); // a hook may end it
    const OthersContext others(this);
    stopRenderThread();
    endFrame();
    makeExistingContextCurrent();
    const Frame last = takeFrame(nullptr);
    if (last.pipeline)
        goOnAfter([&] { last.pipeline->doStopRender(); });
    detachPipelineFromContext();
}

// Of a hook that ends drawing from inside a frame.
void VX_GLMainView::endFrame() {
    ++m_Internals->ending;
}

void VX_GLMainView::startRenderThread() {
    const Exclusive exclusive(this);
    if (!m_DisplayLink) {
        startCounting();
        m_Internals->drawingSince = vx::Clock::current().now();
        m_Internals->meter.start(m_Internals->drawingSince);
        if (!m_Internals->stepped)
            makeDisplayLink();
    } else {
        tieDisplayLink();
    }
    m_BenchMarkSum = 0.0;
}

void VX_GLMainView::startCounting() {
    const std::lock_guard guard(m_FrameObjectsLock);
    ++m_Internals->run;
    m_cbCtx->FrameTimeSum = 0.0;
    m_cbCtx->FrameCount = 0;
    m_LostRefreshes = 0;
}

void VX_GLMainView::makeDisplayLink() {
    CVDisplayLinkCreateWithActiveCGDisplays(&m_DisplayLink);
    tieDisplayLink();
    CVDisplayLinkSetOutputCallback(m_DisplayLink, Heartbeat, m_cbCtx);
    CVDisplayLinkStart(m_DisplayLink);
}

void VX_GLMainView::tieDisplayLink() {
    CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(m_DisplayLink, takeFrame(nullptr).context.get(),
                                                      pixelFormat());
}

void VX_GLMainView::stopRenderThread() {
    // Ahead of the lock, so that the pipeline can end running work before this waits for the frame.
    const Frame last = takeFrame(nullptr);
    if (last.pipeline)
        goOnAfter([&] { last.pipeline->onNotify_StopRenderThread(); });
    const Exclusive exclusive(this);
    if (CVDisplayLinkRef link = std::exchange(m_DisplayLink, nullptr))
        CVDisplayLinkRelease(link);
}

bool VX_GLMainView::makeCurrentContext() {
    NSOpenGLContext* context = openGLContext();
    return context && context->makeCurrentContext();
}

// For teardown hooks, which delete GL objects: current where a context exists, and none is made for them.
bool VX_GLMainView::makeExistingContextCurrent() {
    NSOpenGLContext* context = existingOpenGLContext();
    return context && context->makeCurrentContext();
}

void VX_GLMainView::detachPipelineFromContext() {
    const Frame last = takeFrame(nullptr);
    if (last.pipeline)
        last.pipeline->attachGLContext(nullptr, nullptr);
}

// Whoever holds the lock may wait for a context of the view, so a thread that has it current does not wait
// for the lock with it.
void VX_GLMainView::takeRenderLock() {
    if (m_RenderThreadLock->tryLock())
        return;
    NSRef<NSOpenGLContext> own;
    if (isOwn(NSOpenGLContext::currentContext())) {
        own = NSRef<NSOpenGLContext>::retain(NSOpenGLContext::currentContext());
        NSOpenGLContext::clearCurrentContext();
    }
    m_RenderThreadLock->lock();
    if (own)
        own->makeCurrentContext();
}

void VX_GLMainView::RenderThreadLock() {
    takeRenderLock();
    if (m_RenderThreadLock->holdCount() == 1)
        m_Internals->othersContext.emplace(this);
}

void VX_GLMainView::RenderThreadUnLock() {
    if (m_RenderThreadLock->holdCount() == 1) {
        if (m_Internals->isInFrame()) {
            NSLog("VX_GLMainView::RenderThreadUnLock: the hook of view %p has not locked it",
                  static_cast<void*>(this));
            return;
        }
        // Ahead of the unlock, so that the very next refresh finds the context free.
        if (isOwn(NSOpenGLContext::currentContext()))
            NSOpenGLContext::clearCurrentContext();
        m_Internals->othersContext.reset();
    }
    m_RenderThreadLock->unlock();
}

// The view's own context, or one that shares with it: a child's.
bool VX_GLMainView::isOwn(NSOpenGLContext* context) {
    const NSRef<NSOpenGLContext> own = takeFrame(nullptr).context;
    return context && (context->view() == this || (own && context->sharesWith(own.get())));
}

void VX_GLMainView::setFrameContext(NSOpenGLContext* context) {
    // Kept for the frames: a host may take the view's context away while it is drawing.
    NSRef<NSOpenGLContext> former = NSRef<NSOpenGLContext>::retain(context);
    std::lock_guard guard(m_FrameObjectsLock);
    std::swap(m_FrameContext, former);
    m_cbCtx->GLContext = context;
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/NSOpenGLContext.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <VX_Platform/OpenGL/NSOpenGLView.h>
#include <VX_Platform/OpenGL/private/DriverMessages.h>
#include <VX_Platform/OpenGL/private/ShareGroup.h>
#include <VX_Platform/backends/Platform.h>

#include <chrono>

namespace {

constexpr auto kHandOverBound = std::chrono::seconds(2);

// The calling thread's current context, retained while it is. A thread that ends releases it.
struct CurrentOnThread {
    NSOpenGLContext* context = nullptr;
    ~CurrentOnThread() { NSOpenGLContext::clearCurrentContext(); }
};

CurrentOnThread& current() {
    thread_local CurrentOnThread current;
    return current;
}

std::atomic<bool> logsDriverMessages{false};

vx::GLDriver& driver() {
    return vx::Platform::current()->gl();
}

} // namespace

void NSOpenGLContext::setLogsDriverMessages(bool logs) {
    logsDriverMessages = logs;
}

NSOpenGLContext* NSOpenGLContext::initWithFormat(NSOpenGLPixelFormat* format, NSOpenGLContext* share) {
    if (format) {
        m_Config = format->configuration();
        m_DriverMessagesWanted = logsDriverMessages;
        m_Context =
            driver().createContext(m_Config, share ? share->m_Context : nullptr, m_DriverMessagesWanted);
    }
    if (!m_Context) {
        release();
        return nullptr;
    }
    m_Group = share ? share->m_Group : std::make_shared<vx::ShareGroup>();
    return this;
}

void NSOpenGLContext::dealloc() {
    // It is current nowhere: whoever has it current keeps a reference.
    m_Surface.reset();
    if (m_Context)
        driver().destroyContext(m_Context);
    NSObject::dealloc();
}

bool NSOpenGLContext::makeCurrentContext() {
    return becomeCurrent(true);
}

bool NSOpenGLContext::tryMakeCurrentContext() {
    return becomeCurrent(false);
}

bool NSOpenGLContext::isCurrent() const {
    return current().context == this;
}

NSOpenGLContext* NSOpenGLContext::currentContext() {
    return current().context;
}

bool NSOpenGLContext::becomeCurrent(bool wait) {
    CurrentOnThread& here = current();
    if (here.context == this)
        return m_SurfaceStale.load(std::memory_order_acquire) || m_AppliedSwapInterval != m_SwapInterval
                   ? bind()
                   : true;
    if (!claim(wait))
        return false;
    NSOpenGLContext* former = here.context;
    if (!bind()) {
        handOver();
        return false;
    }
    here.context = retain();
    if (former) {
        former->handOver();
        former->release();
    }
    return true;
}

// Waits for the thread that has the context current to hand it over.
bool NSOpenGLContext::claim(bool wait) {
    std::unique_lock lock(m_OwnerLock);
    const auto free = [this] { return m_Owner == std::thread::id(); };
    if (!free() && !(wait && m_OwnerGone.wait_for(lock, kHandOverBound, free))) {
        if (wait && !m_RefusalLogged) {
            m_RefusalLogged = true;
            NSLog(
                "NSOpenGLContext::makeCurrentContext: context %p stays current on another thread; that "
                "thread must "
                "release it (clearCurrentContext, or RenderThreadUnLock of its view)",
                static_cast<void*>(this));
        }
        return false;
    }
    m_Owner = std::this_thread::get_id();
    return true;
}

void NSOpenGLContext::handOver() {
    std::lock_guard lock(m_OwnerLock);
    m_Owner = std::thread::id();
    m_OwnerGone.notify_one();
}

bool NSOpenGLContext::bind() {
    if (m_SurfaceStale.exchange(false, std::memory_order_acq_rel))
        refreshSurface();
    if (!driver().makeCurrent(m_Context, m_Surface ? m_Surface->handle() : nullptr)) {
        if (!m_RefusalLogged)
            NSLog("NSOpenGLContext::makeCurrentContext: %s", vx::GLDriver::lastError().c_str());
        m_RefusalLogged = true;
        return false;
    }
    if (m_Surface && m_AppliedSwapInterval != m_SwapInterval) {
        m_AppliedSwapInterval = m_SwapInterval;
        driver().setSwapInterval(m_AppliedSwapInterval);
    }
    m_Group->noteFirstUse();
    if (m_DriverMessagesWanted) {
        m_DriverMessagesWanted = false;
        vx::logDriverMessages();
    }
    return true;
}

// Brings the surface to what the view wants now. The old one goes first: a window has one surface at a time.
void NSOpenGLContext::refreshSurface() {
    std::unique_lock lock(m_OwnerLock);
    const Target target = m_Target;
    if (target.present && m_Surface && target.window == m_Surface->window()) {
        m_Surface->follow(target.frame);
        return;
    }
    std::shared_ptr<vx::Surface> old = std::move(m_Surface);
    lock.unlock();
    if (old && isCurrent())
        driver().makeCurrent(m_Context, nullptr);
    old.reset();
    if (!target.present)
        return;
    std::shared_ptr<vx::Surface> made =
        vx::Platform::current()->makeSurface(m_Config, target.window, target.frame);
    lock.lock();
    m_Surface = std::move(made);
    m_AppliedSwapInterval = -1;
}

void NSOpenGLContext::clearCurrentContext() {
    CurrentOnThread& here = current();
    NSOpenGLContext* former = here.context;
    if (!former)
        return;
    here.context = nullptr;
    driver().clearCurrent();
    former->handOver();
    former->release();
}

void NSOpenGLContext::flushBuffer() {
    NSRef<NSOpenGLContext> former = NSRef<NSOpenGLContext>::retain(currentContext());
    if (!makeCurrentContext())
        return;
    if (m_Surface)
        driver().swapBuffers(m_Surface->handle());
    if (!former)
        clearCurrentContext();
    else if (former.get() != this)
        former->makeCurrentContext();
}

void NSOpenGLContext::setValues(const int* values, NSOpenGLContextParameter parameter) {
    if (parameter != NSOpenGLCPSwapInterval)
        return;
    m_SwapInterval = values[0];
    if (isCurrent())
        bind();
}

void NSOpenGLContext::getValues(int* values, NSOpenGLContextParameter parameter) const {
    if (parameter == NSOpenGLCPSwapInterval)
        values[0] = m_SwapInterval;
}

void NSOpenGLContext::setView(NSOpenGLView* view) {
    m_View = view;
    update();
    // Done at once where the context can be had: the window of the old surface may be gone in a moment.
    if (isCurrent())
        bind();
    else if (claim(true)) {
        m_SurfaceStale = false;
        refreshSurface();
        handOver();
    }
}

void NSOpenGLContext::clearDrawable() {
    setView(nullptr);
}

void NSOpenGLContext::update() {
    Target target;
    if (m_View && m_View->canHaveSurface())
        target = {true, m_View->surfaceWindow(), m_View->frameInWindow()};
    std::lock_guard lock(m_OwnerLock);
    m_Target = target;
    m_SurfaceStale.store(true, std::memory_order_release);
}

std::shared_ptr<vx::Surface> NSOpenGLContext::surface() const {
    std::lock_guard lock(m_OwnerLock);
    return m_Surface;
}

vx::GLCapabilities& NSOpenGLContext::capabilities() {
    return m_Group->capabilities;
}

vx::GLCapabilities& vx::currentGLCapabilities() {
    static GLCapabilities nothing;
    NSOpenGLContext* context = NSOpenGLContext::currentContext();
    return context ? context->capabilities() : nothing;
}

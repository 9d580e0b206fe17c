// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/NSOpenGLContext.h>

#include <VX_Platform/AppKit/private/WindowInternals.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <VX_Platform/OpenGL/NSOpenGLView.h>
#include <VX_Platform/OpenGL/private/ContextInternals.h>
#include <VX_Platform/OpenGL/private/CurrentContext.h>
#include <VX_Platform/OpenGL/private/FormerContext.h>

#include <optional>

namespace {

// A thread that ends releases what it has current.
void releaseAtThreadEnd() {
    struct End {
        bool armed = false;
        ~End() { NSOpenGLContext::clearCurrentContext(); }
    };
    thread_local End end;
    end.armed = true;
}

} // namespace

constinit thread_local NSOpenGLContext* vx::currentOnThread = nullptr;

NSOpenGLContext::NSOpenGLContext() : m_Internals(std::make_unique<Internals>()) {}
NSOpenGLContext::~NSOpenGLContext() = default;

NSOpenGLContext* NSOpenGLContext::initWithFormat(NSOpenGLPixelFormat* format, NSOpenGLContext* share) {
    if (format && m_Internals->start(format, share ? share->m_Internals.get() : nullptr))
        return this;
    release();
    return nullptr;
}

void NSOpenGLContext::dealloc() {
    // It is current nowhere: whoever has it current keeps a reference.
    m_Internals->slot->set(nullptr);
    m_Internals->surface.reset();
    if (m_Internals->frameEnd)
        m_Internals->driver->awaitFence(m_Internals->frameEnd);
    if (m_Internals->spare)
        m_Internals->driver->destroySurface(m_Internals->spare);
    if (m_Internals->context)
        m_Internals->driver->destroyContext(m_Internals->context);
    NSObject::dealloc();
}

bool NSOpenGLContext::makeCurrentContext() {
    return becomeCurrent(true);
}

bool NSOpenGLContext::tryMakeCurrentContext() {
    return becomeCurrent(false);
}

bool NSOpenGLContext::isCurrent() const {
    return vx::currentOnThread == this && m_Internals->isBound();
}

bool NSOpenGLContext::sharesWith(const NSOpenGLContext* other) const {
    return m_Internals->group == other->m_Internals->group;
}

NSOpenGLContext* NSOpenGLContext::currentContext() {
    return vx::currentOnThread;
}

bool NSOpenGLContext::becomeCurrent(bool wait) {
    if (vx::currentOnThread == this)
        return (m_Internals->isBound() && !m_Internals->needsBind()) || m_Internals->bind(true);
    if (!m_Internals->claim(wait))
        return false;
    NSOpenGLContext* former = vx::currentOnThread;
    if (!m_Internals->bind(false)) {
        m_Internals->handOver();
        return false;
    }
    releaseAtThreadEnd();
    vx::currentOnThread = retain();
    if (former) {
        former->m_Internals->handOver();
        former->release();
    }
    return true;
}

void NSOpenGLContext::clearCurrentContext() {
    NSOpenGLContext* former = vx::currentOnThread;
    if (!former)
        return;
    vx::currentOnThread = nullptr;
    if (former->m_Internals->isBound())
        former->m_Internals->driver->clearCurrent();
    former->m_Internals->handOver();
    former->release();
}

bool NSOpenGLContext::flushBuffer() {
    std::optional<vx::FormerContext> former;
    if (!isCurrent()) {
        former.emplace();
        if (!makeCurrentContext())
            return false;
    } else if (m_Internals->needsBind() && !m_Internals->bind(true)) {
        return false;
    }
    vx::Surface* surface = m_Internals->surface.get();
    const bool taken = !surface || surface->takesFrame();
    if (surface && taken)
        m_Internals->swap();
    if (former)
        former->restore();
    return taken;
}

void NSOpenGLContext::setValues(const int* values, NSOpenGLContextParameter parameter) {
    if (parameter != NSOpenGLCPSwapInterval)
        return;
    m_Internals->swapInterval = values[0];
    if (isCurrent())
        m_Internals->bind(true);
}

void NSOpenGLContext::getValues(int* values, NSOpenGLContextParameter parameter) const {
    if (parameter == NSOpenGLCPSwapInterval)
        values[0] = m_Internals->swapInterval;
}

void NSOpenGLContext::setView(NSOpenGLView* view) {
    m_View = view;
    update();
    // Done at once where the context can be had: the window of the old surface may be gone in a moment.
    if (isCurrent())
        m_Internals->bind(true);
    else if (m_Internals->claim(true)) {
        m_Internals->surfaceStale = false;
        m_Internals->refreshSurface(false);
        m_Internals->handOver();
    }
}

void NSOpenGLContext::clearDrawable() {
    setView(nullptr);
}

void NSOpenGLContext::update() {
    Internals::Target target;
    if (m_View && m_View->canHaveSurface()) {
        NSWindow* window = m_View->window();
        target = {true, window ? NSWindow::Internals::backendOf(window) : nullptr, m_View->frameInWindow()};
    }
    m_Internals->setTarget(target);
}

CGSize NSOpenGLContext::drawableSize() const {
    return m_Internals->surface ? m_Internals->drawableSize : CGSize();
}

void NSOpenGLContext::noteDisplay() {
    m_Internals->slot->noteDisplay();
}

vx::GLCapabilities& NSOpenGLContext::capabilities() {
    return m_Internals->group->capabilities;
}

vx::GLCapabilities& vx::currentGLCapabilities() {
    if (NSOpenGLContext* context = NSOpenGLContext::currentContext())
        return context->capabilities();
    // A host's own context: its record is read anew each time, since it may be another one by now.
    thread_local GLCapabilities foreign;
    foreign = GLDriver::anyContextIsCurrent() ? readGLCapabilities() : GLCapabilities();
    return foreign;
}

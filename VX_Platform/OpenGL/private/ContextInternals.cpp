// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/ContextInternals.h>

#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <VX_Platform/OpenGL/private/DriverMessages.h>
#include <VX_Platform/OpenGL/private/PixelFormatInternals.h>

#include <epoxy/gl.h>

#include <chrono>
#include <utility>

namespace {

constexpr auto kHandOverBound = std::chrono::seconds(2);

} // namespace

bool NSOpenGLContext::Internals::start(NSOpenGLPixelFormat* format, const Internals* share) {
    platform = NSOpenGLPixelFormat::Internals::platformOf(format);
    driver = &platform->gl();
    config = NSOpenGLPixelFormat::Internals::configOf(format);
    driverMessagesWanted = VX_GetDiagnostics();
    context = driver->createContext(config, share ? share->context : nullptr, driverMessagesWanted);
    group = share ? share->group : std::make_shared<vx::ShareGroup>();
    return context != nullptr;
}

bool NSOpenGLContext::Internals::claim(bool wait) {
    std::unique_lock lock(ownerLock);
    const std::thread::id self = std::this_thread::get_id();
    if (owner != self) {
        if (!(wait ? waitForTurn(lock) : owner == std::thread::id() && !promised))
            return false;
        owner = self;
        tried = !wait;
    }
    ++claims;
    return true;
}

bool NSOpenGLContext::Internals::waitForTurn(std::unique_lock<std::mutex>& lock) {
    ++waiting;
    const bool free = ownerGone.wait_for(lock, kHandOverBound, [this] { return owner == std::thread::id(); });
    --waiting;
    promised = false;
    if (!free && !std::exchange(refusalLogged, true))
        NSLog(
            "NSOpenGLContext::makeCurrentContext: context %p stays current on another thread; that thread "
            "must release it (clearCurrentContext, or RenderThreadUnLock of its view)",
            context);
    return free;
}

void NSOpenGLContext::Internals::handOver() {
    std::lock_guard lock(ownerLock);
    if (--claims > 0)
        return;
    owner = std::thread::id();
    promised = std::exchange(tried, false) && waiting > 0;
    ownerGone.notify_one();
}

bool NSOpenGLContext::Internals::needsBind() const {
    return surfaceStale.load(std::memory_order_acquire) || appliedSwapInterval != swapInterval;
}

bool NSOpenGLContext::Internals::bind(bool isCurrent) {
    if (surfaceStale.exchange(false, std::memory_order_acq_rel))
        refreshSurface(isCurrent);
    if (!driver->makeCurrent(context, drawable())) {
        if (!std::exchange(refusalLogged, true))
            NSLog("NSOpenGLContext::makeCurrentContext: %s", vx::GLDriver::lastError().c_str());
        return false;
    }
    if (surface && spare)
        leaveSpare();
    if (surface && appliedSwapInterval != swapInterval) {
        appliedSwapInterval = swapInterval;
        driver->setSwapInterval(appliedSwapInterval);
    }
    group->noteFirstUse(*driver);
    if (std::exchange(driverMessagesWanted, false))
        vx::logDriverMessages();
    return true;
}

void NSOpenGLContext::Internals::swap() {
    driver->swapBuffers(surface->handle());
    driver->awaitFence(std::exchange(frameEnd, driver->createFence()));
}

vx::GLDriver::Handle NSOpenGLContext::Internals::drawable() {
    if (surface)
        return surface->handle();
    if (!spare && driver->canMakePbuffers(config))
        spare = driver->createPbuffer(config, 1, 1);
    return spare;
}

// GL gives a context the viewport of the first surface it sees, and never another.
void NSOpenGLContext::Internals::leaveSpare() {
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    if (viewport[2] == 1 && viewport[3] == 1) {
        glViewport(0, 0, static_cast<int>(drawableSize.width), static_cast<int>(drawableSize.height));
        glScissor(0, 0, static_cast<int>(drawableSize.width), static_cast<int>(drawableSize.height));
    }
    driver->destroySurface(std::exchange(spare, nullptr));
}

void NSOpenGLContext::Internals::setTarget(const Target& wanted) {
    std::lock_guard lock(ownerLock);
    target = wanted;
    surfaceStale.store(true, std::memory_order_release);
}

// Brings the surface to what the view wants now. The old one goes first: a window has one surface at a time.
void NSOpenGLContext::Internals::refreshSurface(bool isCurrent) {
    Target wanted;
    {
        std::lock_guard lock(ownerLock);
        wanted = target;
    }
    drawableSize = wanted.frame.size;
    if (wanted.present && surface && wanted.window == surface->window()) {
        surface->follow(wanted.frame);
        return;
    }
    if (surface && isCurrent)
        driver->makeCurrent(context, nullptr);
    slot->set(nullptr);
    surface.reset();
    if (!wanted.present)
        return;
    surface = platform->makeSurface(config, wanted.window, wanted.frame);
    slot->set(surface);
    appliedSwapInterval = -1;
}

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/private/ShareGroup.h>
#include <VX_Platform/OpenGL/private/SurfaceSlot.h>

#include <condition_variable>
#include <thread>

/// What a context holds of the platform below it, and who has it current.
struct NSOpenGLContext::Internals {
    std::shared_ptr<vx::Platform> platform;
    vx::GLDriver* driver = nullptr;
    vx::GLDriver::Handle config = nullptr;
    vx::GLDriver::Handle context = nullptr;
    std::shared_ptr<vx::ShareGroup> group;
    std::shared_ptr<vx::SurfaceSlot> slot = std::make_shared<vx::SurfaceSlot>();

    // Everything about the surface belongs to the thread that has the context current.
    std::shared_ptr<vx::Surface> surface;
    CGSize drawableSize;
    // In its place where there is none, so that what a frame draws is no error; one pixel, of no use.
    vx::GLDriver::Handle spare = nullptr;
    // Of the frame before, where nothing else keeps frames from piling up in the driver.
    vx::GLDriver::Handle frameEnd = nullptr;
    int appliedSwapInterval = -1;
    bool refusalLogged = false;
    // Set until the driver's messages have been connected with the log.
    bool driverMessagesWanted = false;

    std::mutex ownerLock;
    std::condition_variable ownerGone;
    std::thread::id owner;
    // How often `owner` has claimed it.
    int claims = 0;
    int waiting = 0;
    // Who comes without waiting leaves the next turn to those who wait.
    bool tried = false;
    bool promised = false;

    // What the view wants, written by its thread and taken by the thread that has the context current.
    struct Target {
        bool present = false;
        vx::WindowBackend* window = nullptr;
        CGRect frame;
    };
    Target target;
    std::atomic<bool> surfaceStale{false};
    std::atomic<int> swapInterval{0};

    bool start(NSOpenGLPixelFormat* format, const Internals* share);
    /// Makes the context the calling thread's; waits, if asked to, for the one that has it to hand it over.
    /// Each claim needs its `handOver`.
    bool claim(bool wait);
    void handOver();
    /// Whether the driver has it current on the calling thread: a host may have bound a context of its own.
    bool isBound() const { return vx::GLDriver::currentContext() == context; }
    /// Binds the context to the calling thread, which has claimed it, with the surface the view wants now.
    bool bind(bool isCurrent);
    /// Hands a frame over, and waits for the one before it.
    void swap();
    bool waitForTurn(std::unique_lock<std::mutex>& lock);
    bool needsBind() const;
    void refreshSurface(bool isCurrent);
    vx::GLDriver::Handle drawable();
    void leaveSpare();
    void setTarget(const Target& wanted);

    static Internals& of(const NSOpenGLContext* context) { return *context->m_Internals; }
    static const std::shared_ptr<vx::SurfaceSlot>& slotOf(const NSOpenGLContext* context) {
        return context->m_Internals->slot;
    }
};

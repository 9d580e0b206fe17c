// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <vector>

/// Holds what is autoreleased on its thread from `init` to its own `release`. Pools nest; one is released on
/// the thread that made it, the innermost first (releasing an outer one ends those inside it too).
///
/// A thread without a pool has one of its own that ends with the thread, or on the main thread with each step
/// of the run loop.
class VX_EXPORT NSAutoreleasePool : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSAutoreleasePool)

    /// Makes this the calling thread's innermost pool. Returns the pool.
    NSAutoreleasePool* init() override;
    /// Ends the pools that were left open inside this one, then releases its objects, those that they
    /// autorelease on their way out as well. On the thread of `init`.
    void dealloc() override;

    /// Adds an object to the calling thread's innermost pool, which takes over one reference of the caller's.
    /// Any thread. What is added while the thread itself ends, after its own pool, is never released.
    static void addObject(NSObject* object);

    /// Releases what lies in the calling thread's own pool, which is there when no other is. For a loop of a
    /// thread's own; the application's run loop does it in each step. Any thread.
    static void drainThreadPool();

protected:
    ~NSAutoreleasePool() override = default;

private:
    void drain();

    std::vector<NSRef<NSObject>> m_Objects;
};

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

    NSAutoreleasePool* init() override;
    void dealloc() override;

    /// Adds an object to the calling thread's innermost pool.
    static void addObject(NSObject* object);

    /// Ends what lies in the calling thread's own pool, which is there when no other is.
    static void drainThreadPool();

private:
    void drain();

    std::vector<NSObject*> m_Objects;
};

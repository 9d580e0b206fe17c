// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSAutoreleasePool.h>

#include <algorithm>

namespace {

using Objects = std::vector<NSRef<NSObject>>;

void releaseAll(Objects& objects) {
    // Ending an object may autorelease others.
    while (!objects.empty()) {
        Objects batch;
        batch.swap(objects);
    }
}

thread_local bool poolsEnded = false;

struct ThreadPools {
    std::vector<NSAutoreleasePool*> stack;
    Objects bottom;

    ~ThreadPools() {
        releaseAll(bottom);
        poolsEnded = true;
    }
};

ThreadPools& threadPools() {
    thread_local ThreadPools pools;
    return pools;
}

} // namespace

NSAutoreleasePool* NSAutoreleasePool::init() {
    threadPools().stack.push_back(this);
    return this;
}

void NSAutoreleasePool::dealloc() {
    auto& stack = threadPools().stack;
    const auto self = std::find(stack.begin(), stack.end(), this);
    if (self != stack.end()) {
        // Pools that were left open inside this one end with it.
        while (stack.back() != this)
            stack.back()->release();
        drain();
        stack.pop_back();
    }
    NSObject::dealloc();
}

void NSAutoreleasePool::drain() {
    releaseAll(m_Objects);
}

void NSAutoreleasePool::addObject(NSObject* object) {
    if (poolsEnded) // by another end of the thread's: nothing is left to end the object later, so it stays
        return;
    ThreadPools& pools = threadPools();
    Objects& innermost = pools.stack.empty() ? pools.bottom : pools.stack.back()->m_Objects;
    innermost.push_back(NSRef<NSObject>::adopt(object));
}

void NSAutoreleasePool::drainThreadPool() {
    releaseAll(threadPools().bottom);
}

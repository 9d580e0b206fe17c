// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSAutoreleasePool.h>

#include <algorithm>

namespace {

void releaseAll(std::vector<NSObject*>& objects) {
    // Ending an object may autorelease others.
    while (!objects.empty()) {
        std::vector<NSObject*> batch;
        batch.swap(objects);
        for (NSObject* object : batch)
            object->release();
    }
}

struct ThreadPools {
    std::vector<NSAutoreleasePool*> stack;
    std::vector<NSObject*> bottom;

    ~ThreadPools() { releaseAll(bottom); }
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
    ThreadPools& pools = threadPools();
    (pools.stack.empty() ? pools.bottom : pools.stack.back()->m_Objects).push_back(object);
}

void NSAutoreleasePool::drainThreadPool() {
    releaseAll(threadPools().bottom);
}

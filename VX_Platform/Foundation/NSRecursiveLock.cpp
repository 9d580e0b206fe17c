// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSRecursiveLock.h>

#include <VX_Platform/Foundation/NSLog.h>

NSRecursiveLock* NSRecursiveLock::init() {
    return this;
}

void NSRecursiveLock::lock() {
    m_Mutex.lock();
    noteTaken();
}

bool NSRecursiveLock::tryLock() {
    if (!m_Mutex.try_lock())
        return false;
    noteTaken();
    return true;
}

void NSRecursiveLock::noteTaken() {
    m_Holder.store(std::this_thread::get_id(), std::memory_order_relaxed);
    ++m_Depth;
}

void NSRecursiveLock::unlock() {
    if (!isHeldByCurrentThread()) {
        NSLog("NSRecursiveLock::unlock: lock %p is not held by the calling thread", static_cast<void*>(this));
        return;
    }
    if (--m_Depth == 0)
        m_Holder.store(std::thread::id(), std::memory_order_relaxed);
    m_Mutex.unlock();
}

bool NSRecursiveLock::isHeldByCurrentThread() const {
    return m_Holder.load(std::memory_order_relaxed) == std::this_thread::get_id();
}

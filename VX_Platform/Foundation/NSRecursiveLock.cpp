// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSRecursiveLock.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <utility>

NSRecursiveLock* NSRecursiveLock::init() {
    return this;
}

void NSRecursiveLock::lock() {
    ++m_Waiting;
    m_Mutex.lock();
    --m_Waiting;
    noteTaken();
}

bool NSRecursiveLock::tryLock() {
    if ((m_Promised && !isHeldByCurrentThread()) || !m_Mutex.try_lock())
        return false;
    if (m_Depth == 0)
        m_Tried = true;
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
    if (--m_Depth == 0) {
        m_Holder.store(std::thread::id(), std::memory_order_relaxed);
        m_Promised = std::exchange(m_Tried, false) && m_Waiting > 0;
    }
    m_Mutex.unlock();
}

bool NSRecursiveLock::isHeldByCurrentThread() const {
    return m_Holder.load(std::memory_order_relaxed) == std::this_thread::get_id();
}

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <mutex>
#include <thread>

/// A lock that its holder may take again; each `lock` or successful `tryLock` needs its `unlock` on the same
/// thread.
class VX_EXPORT NSRecursiveLock : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSRecursiveLock)

    NSRecursiveLock* init() override;

    void lock();
    bool tryLock();
    /// Unlocking what the calling thread does not hold is a caller's bug; it is logged and does nothing.
    void unlock();
    /// Whether the calling thread holds the lock.
    bool isHeldByCurrentThread() const;
    /// How often the calling thread holds it; 0 when it does not.
    int holdCount() const { return isHeldByCurrentThread() ? m_Depth : 0; }

private:
    void noteTaken();

    std::recursive_mutex m_Mutex;
    std::atomic<std::thread::id> m_Holder{};
    int m_Depth = 0;
};

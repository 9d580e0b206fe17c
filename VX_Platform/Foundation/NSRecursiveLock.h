// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <mutex>
#include <thread>

/// A lock that its holder may take again; each `lock` or successful `tryLock` needs its `unlock` on the same
/// thread. A thread that waits in `lock` gets the turn after one that came by `tryLock`, however soon that
/// one tries again. Any thread.
class VX_EXPORT NSRecursiveLock : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSRecursiveLock)

    /// Returns the lock, held by nobody.
    NSRecursiveLock* init() override;

    /// Waits until no other thread holds the lock, and takes it.
    void lock();
    /// Takes the lock and returns true, or returns false at once while another thread holds it or is to have
    /// it next.
    bool tryLock();
    /// Gives one hold back; the last one lets other threads in. Without a hold of the calling thread nothing
    /// happens, but for a line in the log: that is a caller's bug.
    void unlock();
    /// Returns whether the calling thread holds the lock.
    bool isHeldByCurrentThread() const;
    /// Returns how often the calling thread holds it; 0 when it does not.
    int holdCount() const { return isHeldByCurrentThread() ? m_Depth : 0; }

protected:
    ~NSRecursiveLock() override = default;

private:
    void noteTaken();

    std::recursive_mutex m_Mutex;
    std::atomic<std::thread::id> m_Holder{};
    std::atomic<int> m_Waiting{0};
    // Set when one that came by `tryLock` leaves the lock to those who wait.
    std::atomic<bool> m_Promised{false};
    int m_Depth = 0;
    bool m_Tried = false;
};

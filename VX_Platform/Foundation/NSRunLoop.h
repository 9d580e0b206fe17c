// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSTimer.h>

#include <vector>

/// The timers of one thread, for that thread alone. The application's loop runs the main thread's; another
/// thread calls `fireDueTimers` from a loop of its own.
class VX_EXPORT NSRunLoop : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSRunLoop)

    /// Returns the calling thread's run loop; borrowed, lives as long as the thread. Any thread.
    static NSRunLoop* currentRunLoop();

    /// Retains the timer until `fireDueTimers` finds it invalid.
    void addTimer(NSTimer* timer);
    /// Fires each timer whose date has come, once, in the order of adding; one that is added meanwhile waits
    /// for the next call, and one whose handler is running is left out. What the handlers autorelease ends
    /// with the call.
    void fireDueTimers();
    /// Returns the seconds until the next timer is due, 0 when one is overdue, a negative number when there
    /// is none.
    double secondsToNextTimer() const;

protected:
    ~NSRunLoop() override = default;

private:
    void dropInvalidTimers();

    std::vector<NSRef<NSTimer>> m_Timers;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <vector>

class NSTimer;

/// The timers of one thread. The application's loop runs the main thread's; another thread calls
/// `fireDueTimers` from a loop of its own.
class VX_EXPORT NSRunLoop : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSRunLoop)

    /// The calling thread's run loop; borrowed, lives as long as the thread.
    static NSRunLoop* currentRunLoop();

    void dealloc() override;

    /// Retains the timer until it is found invalid.
    void addTimer(NSTimer* timer);
    /// Fires each timer whose date has come, once, in the order of adding.
    void fireDueTimers();
    /// Seconds until the next timer is due, 0 when one is overdue, negative when there is none.
    double secondsToNextTimer() const;

private:
    void dropInvalidTimers();

    std::vector<NSTimer*> m_Timers;
};

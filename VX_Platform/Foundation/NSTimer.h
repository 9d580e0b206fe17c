// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

#include <functional>

/// Calls back after an interval, once or again and again, from the run loop of the thread that scheduled it.
class VX_EXPORT NSTimer : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSTimer)

    using Handler = std::function<void(NSTimer*)>;

    /// Makes a timer and adds it to the calling thread's run loop, which retains it until it is invalid.
    /// Interval in seconds; one of 0 or less counts as 0.1 ms. Borrowed, autoreleased.
    static NSTimer* scheduledTimerWithTimeInterval(double seconds, Handler handler, bool repeats);

    /// Stops the timer for good; harmless when repeated. On the thread of its run loop.
    void invalidate();
    bool isValid() const { return m_Valid; }
    double timeInterval() const { return m_Interval; }
    /// When it is due next, on the clock of `NSDate`.
    double fireDate() const { return m_FireDate; }

    /// Calls the handler and moves the date on: one that repeats goes on from the date it was due, skipping
    /// those already missed; another becomes invalid.
    void fire();

private:
    Handler m_Handler;
    double m_Interval = 0.0;
    double m_FireDate = 0.0;
    bool m_Repeats = false;
    bool m_Valid = true;
};

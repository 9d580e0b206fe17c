// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSRunLoop.h>

#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSDate.h>

#include <algorithm>

NSRunLoop* NSRunLoop::currentRunLoop() {
    thread_local NSRef<NSRunLoop> loop = NSRef<NSRunLoop>::adopt(new NSRunLoop);
    return loop.get();
}

void NSRunLoop::addTimer(NSTimer* timer) {
    m_Timers.push_back(NSRef<NSTimer>::retain(timer));
}

void NSRunLoop::fireDueTimers() {
    // A handler that runs a step of the loop must find its own objects afterwards.
    const NSRef<NSAutoreleasePool> pool = NSInit(new NSAutoreleasePool);
    const double now = NSDate::timeIntervalSinceReferenceDate();
    // Over those of the start: a handler may add timers, and may run a step of the loop itself.
    const std::vector<NSRef<NSTimer>> present = m_Timers;
    for (const NSRef<NSTimer>& timer : present)
        if (timer->isValid() && !timer->isFiring() && timer->fireDate() <= now)
            timer->fire();
    dropInvalidTimers();
}

void NSRunLoop::dropInvalidTimers() {
    const auto isValid = [](const NSRef<NSTimer>& timer) { return timer->isValid(); };
    const auto firstInvalid = std::stable_partition(m_Timers.begin(), m_Timers.end(), isValid);
    // What goes ends only when the list is in order again.
    const std::vector<NSRef<NSTimer>> ended(firstInvalid, m_Timers.end());
    m_Timers.erase(firstInvalid, m_Timers.end());
}

double NSRunLoop::secondsToNextTimer() const {
    double next = -1.0;
    for (const NSRef<NSTimer>& timer : m_Timers) {
        if (!timer->isValid() || timer->isFiring())
            continue;
        const double wait = std::max(0.0, timer->fireDate() - NSDate::timeIntervalSinceReferenceDate());
        next = next < 0.0 ? wait : std::min(next, wait);
    }
    return next;
}

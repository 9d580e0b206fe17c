// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSRunLoop.h>

#include <VX_Platform/Foundation/NSDate.h>
#include <VX_Platform/Foundation/NSTimer.h>

#include <algorithm>

NSRunLoop* NSRunLoop::currentRunLoop() {
    thread_local NSRef<NSRunLoop> loop = NSRef<NSRunLoop>::adopt(new NSRunLoop);
    return loop.get();
}

void NSRunLoop::dealloc() {
    for (NSTimer* timer : m_Timers)
        timer->release();
    NSObject::dealloc();
}

void NSRunLoop::addTimer(NSTimer* timer) {
    m_Timers.push_back(timer->retain());
}

void NSRunLoop::fireDueTimers() {
    const double now = NSDate::timeIntervalSinceReferenceDate();
    // By index and up to the present end: a handler may add timers.
    const std::size_t present = m_Timers.size();
    for (std::size_t i = 0; i < present; ++i)
        if (m_Timers[i]->isValid() && m_Timers[i]->fireDate() <= now)
            m_Timers[i]->fire();
    dropInvalidTimers();
}

void NSRunLoop::dropInvalidTimers() {
    const auto firstInvalid = std::stable_partition(m_Timers.begin(), m_Timers.end(),
                                                    [](const NSTimer* timer) { return timer->isValid(); });
    const std::vector<NSTimer*> ended(firstInvalid, m_Timers.end());
    m_Timers.erase(firstInvalid, m_Timers.end());
    for (NSTimer* timer : ended)
        timer->release();
}

double NSRunLoop::secondsToNextTimer() const {
    double next = -1.0;
    for (const NSTimer* timer : m_Timers) {
        if (!timer->isValid())
            continue;
        const double wait = std::max(0.0, timer->fireDate() - NSDate::timeIntervalSinceReferenceDate());
        next = next < 0.0 ? wait : std::min(next, wait);
    }
    return next;
}

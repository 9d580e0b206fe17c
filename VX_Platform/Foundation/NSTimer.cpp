// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSTimer.h>

#include <VX_Platform/Foundation/NSDate.h>
#include <VX_Platform/Foundation/NSRunLoop.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Counts a call in progress, which an exception may end.
struct Firing {
    explicit Firing(int& depth) : depth(depth) { ++depth; }
    ~Firing() { --depth; }
    int& depth;
};

} // namespace

NSTimer* NSTimer::scheduledTimerWithTimeInterval(double seconds, Handler handler, bool repeats) {
    auto* timer = new NSTimer;
    timer->m_Handler = std::move(handler);
    timer->m_Interval =
        std::isnan(seconds) ? std::numeric_limits<double>::infinity() : std::max(seconds, 0.0001);
    timer->m_FireDate = NSDate::timeIntervalSinceReferenceDate() + timer->m_Interval;
    timer->m_Repeats = repeats;
    NSRunLoop::currentRunLoop()->addTimer(timer);
    return timer->autorelease();
}

void NSTimer::invalidate() {
    m_Valid = false;
}

void NSTimer::fire() {
    if (!m_Valid)
        return;
    NSRef<NSTimer> keep = NSRef<NSTimer>::retain(this);
    if (m_Repeats) {
        const double late = NSDate::timeIntervalSinceReferenceDate() - m_FireDate;
        m_FireDate += m_Interval * std::max(1.0, std::floor(late / m_Interval) + 1.0);
    } else {
        m_Valid = false;
    }
    const Firing firing(m_Firing);
    if (m_Handler)
        m_Handler(this);
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSRunLoop.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/NSTimer.h>
#include <tests/support/SteppedClock.h>

#include <gtest/gtest.h>

#include <cmath>
#include <memory>
#include <thread>

namespace {

constexpr std::uint64_t kMillisecond = vx::Clock::kSecond / 1000;

// Fires what is due at each millisecond of a stretch of time.
void runFor(vx::test::SteppedClock& clock, int milliseconds) {
    for (int i = 0; i < milliseconds; ++i) {
        clock.step(kMillisecond);
        NSRunLoop::currentRunLoop()->fireDueTimers();
    }
}

// A timer that counts its beats.
NSTimer* counting(int& beats, double seconds, bool repeats) {
    return NSTimer::scheduledTimerWithTimeInterval(
        seconds, [&beats](NSTimer*) { ++beats; }, repeats);
}

} // namespace

TEST(Clock, DoesNotSleepForATimeThatLiesBehind) {
    EXPECT_TRUE(vx::Clock::system().sleepUntil(0, -1));
}

TEST(NSTimer, FiresWhenDueGoesOnFromItsBeatWithoutCatchingUpAndMayEndStartAndRunOthers) {
    vx::test::SteppedClock clock;
    auto* pool = (new NSAutoreleasePool)->init();
    NSRunLoop* loop = NSRunLoop::currentRunLoop();
    int once = 0, beats = 0;
    counting(once, 0.010, false);
    NSTimer* timer = counting(beats, 0.004, true)->retain();
    EXPECT_NEAR(loop->secondsToNextTimer(), 0.004, 1e-6);
    runFor(clock, 3);
    EXPECT_EQ(beats, 0);
    runFor(clock, 6);
    EXPECT_EQ(beats, 2);
    EXPECT_EQ(once, 0);
    clock.step(21 * kMillisecond + kMillisecond / 2); // the beats at 12, 16, 20, 24 and 28 ms go by
    EXPECT_EQ(loop->secondsToNextTimer(), 0.0);
    loop->fireDueTimers();
    loop->fireDueTimers();
    EXPECT_EQ(beats, 3);
    EXPECT_NEAR(loop->secondsToNextTimer(), 0.0015, 1e-6) << "not on the beat at 32 ms";
    timer->invalidate();
    runFor(clock, 10);
    EXPECT_EQ(beats, 3);
    EXPECT_EQ(once, 1);
    EXPECT_LT(loop->secondsToNextTimer(), 0.0) << "a timer is left";
    EXPECT_EQ(timer->retainCount(), 2) << "the loop still holds it";
    timer->release();

    auto held = std::make_shared<int>(7);
    const auto changeTimers = [&, held](NSTimer* timer) {
        timer->invalidate();
        counting(beats, 0, false);
        loop->fireDueTimers(); // a loop inside the loop
        EXPECT_EQ(*held, 7);
    };
    NSTimer::scheduledTimerWithTimeInterval(0.0005, changeTimers, true);
    counting(once, 0.0005, false);
    pool->release(); // the loop alone keeps the timers
    std::thread([] { EXPECT_LT(NSRunLoop::currentRunLoop()->secondsToNextTimer(), 0.0); }).join();
    pool = (new NSAutoreleasePool)->init();
    runFor(clock, 1);
    EXPECT_EQ(held.use_count(), 2) << "the ended timer is still there";
    EXPECT_EQ(once, 2);
    runFor(clock, 1);
    EXPECT_EQ(beats, 4);
    pool->release();
}

TEST(NSTimer, IsNotFiredByTheLoopInsideItsHandlerAndNeverForNaN) {
    vx::test::SteppedClock clock;
    int calls = 0;
    const auto runLoop = [&](NSTimer* timer) {
        NSString* own = NSString::stringWithUTF8String("own");
        NSAutoreleasePool::drainThreadPool(); // as a step of the application's loop does
        if (++calls < 3)
            runFor(clock, 5);
        EXPECT_TRUE(timer->isFiring() && NSRunLoop::currentRunLoop()->secondsToNextTimer() > 1.0);
        EXPECT_EQ(own->retainCount(), 1);
    };
    NSTimer* timer = NSTimer::scheduledTimerWithTimeInterval(0.001, runLoop, true)->retain();
    counting(calls, NAN, true);
    EXPECT_NEAR(NSRunLoop::currentRunLoop()->secondsToNextTimer(), 0.001, 1e-6);
    runFor(clock, 1);
    EXPECT_EQ(calls, 1);
    runFor(clock, 1);
    EXPECT_EQ(calls, 2);
    timer->invalidate();
    timer->release();
}

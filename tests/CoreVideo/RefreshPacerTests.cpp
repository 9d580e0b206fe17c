// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreVideo/private/RefreshPacer.h>
#include <tests/support/LogCollector.h>
#include <tests/support/ScriptedDisplay.h>

#include <gtest/gtest.h>

#include <thread>

using vx::Refresh;
using vx::RefreshPacer;
using vx::test::LogCollector;
using vx::test::ScriptedDisplay;
using vx::test::ScriptedSource;
using vx::test::SteppedClock;

namespace {

constexpr std::uint64_t kMillisecond = 1000000;
constexpr std::uint64_t kPeriod = 16666667; // 60 Hz
constexpr double kSeconds = kPeriod * 1e-9;

// A pacer on the refreshes of a scripted display, and what a link's thread does with it.
struct Paced {
    SteppedClock clock;
    LogCollector log;
    std::shared_ptr<ScriptedDisplay> display = std::make_shared<ScriptedDisplay>(clock, kPeriod);
    RefreshPacer pacer{std::make_unique<ScriptedSource>(display), kSeconds};

    // Waits for a refresh and spends the time of a callback.
    Refresh frame(std::uint64_t callback = 0) {
        const Refresh refresh = pacer.wait().value();
        clock.step(callback);
        return refresh;
    }
};

} // namespace

TEST(RefreshPacer, KeepsTheBeatOfTheClockAndGivesUpWhatALongCallbackLetGoBy) {
    SteppedClock clock;
    RefreshPacer pacer(nullptr, kSeconds);
    const Refresh first = pacer.wait().value();
    for (int i = 1; i <= 5; ++i)
        EXPECT_EQ(pacer.wait()->time, first.time + i * kPeriod);
    EXPECT_EQ(pacer.missed(), 0u);
    clock.step(40 * kMillisecond); // 2.4 refreshes
    const Refresh late = pacer.wait().value();
    EXPECT_EQ(late.time, first.time + 8 * kPeriod) << "on the beat, and not in a burst";
    EXPECT_EQ(late.count, first.count + 8);
    EXPECT_EQ(pacer.wait()->time, first.time + 9 * kPeriod);
    EXPECT_EQ(pacer.missed(), 2u);
    EXPECT_EQ(late.period, kPeriod);
    EXPECT_NEAR(pacer.measuredPeriod(), kSeconds, 1e-9);
    EXPECT_STREQ(pacer.throttleName(), RefreshPacer::kDeadlines);
}

TEST(RefreshPacer, TakesTimeAndNumberFromTheDisplayAndAsksAheadOfTheCallback) {
    Paced paced;
    const Refresh first = paced.frame();
    EXPECT_EQ(first.time % kPeriod, 0u);
    EXPECT_EQ(paced.display->questions, 2) << "a callback that waits for the retrace itself loses none";
    const Refresh second = paced.frame();
    EXPECT_EQ(second.time, first.time + kPeriod);
    EXPECT_EQ(second.count, first.count + 1);
    EXPECT_STREQ(paced.pacer.throttleName(), "scripted events");
}

// Eight seconds of callbacks that take longer than a refresh.
class SlowCallback : public testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(RefreshPacer, SlowCallback, testing::Values(5, 16, 20, 25, 40));

TEST_P(SlowCallback, LosesNoCountOfTheRefreshes) {
    Paced paced;
    const Refresh first = paced.frame();
    Refresh last = first;
    std::uint64_t callbacks = 1;
    while (last.time < first.time + 480 * kPeriod) {
        const Refresh next = paced.frame(GetParam() * kMillisecond);
        ASSERT_GT(next.count, last.count);
        ASSERT_LT(paced.clock.now() - GetParam() * kMillisecond - next.time, kPeriod)
            << "never an old refresh";
        last = next;
        ++callbacks;
    }
    EXPECT_EQ(last.count - first.count, (last.time - first.time) / kPeriod);
    EXPECT_EQ(paced.pacer.missed() + callbacks, last.count - first.count + 1);
    EXPECT_NEAR(paced.pacer.measuredPeriod(), kSeconds, kSeconds * 0.001);
}

TEST(RefreshPacer, HoldsTheBeatWhileTheDisplayIsSilentAndComesBackWithTheFirstAnswer) {
    Paced paced;
    Refresh last = paced.frame();
    for (int stall = 0; stall < 3; ++stall) {
        for (int i = 0; i < 5; ++i)
            last = paced.frame();
        paced.display->silentUntil = paced.clock.now() + 250 * kMillisecond;
        const std::uint64_t stalledAt = last.time;
        int held = 0;
        while ((last = paced.frame()).time < paced.display->silentUntil) {
            EXPECT_EQ((last.time - stalledAt) % kPeriod, 0u);
            ++held;
        }
        EXPECT_GE(held, 10) << "frames go on after the first few refreshes";
        EXPECT_EQ(last.time, stalledAt + 15 * kPeriod) << "the first refresh after the silence";
        EXPECT_STREQ(paced.pacer.throttleName(), "scripted events");
        EXPECT_EQ(paced.frame().count, last.count + 1);
    }
    EXPECT_EQ(paced.log.count("hold the beat until they come back"), 3);
    EXPECT_EQ(paced.log.count("are back"), 3);
    EXPECT_EQ(last.count, (last.time - vx::Clock::kSecond) / kPeriod + 1)
        << "no refresh counted twice or lost";
}

TEST(RefreshPacer, AsksAgainInALongSilence) {
    Paced paced;
    paced.frame();
    paced.display->silentUntil = 1ull << 62;
    const int before = paced.display->questions;
    for (int i = 0; i < 300; ++i)
        paced.frame();
    EXPECT_GE(paced.display->questions - before, 3);
    EXPECT_LE(paced.display->questions - before, 10) << "and not at each beat";
}

TEST(RefreshPacer, BelievesWhatItMeasures) {
    Paced paced;
    paced.pacer.follow(std::make_unique<ScriptedSource>(paced.display), 1.0 / 75);
    EXPECT_EQ(paced.frame().period, 13333333u);
    for (int i = 0; i < 200; ++i)
        paced.frame();
    EXPECT_NEAR(paced.frame().period, kPeriod, kPeriod * 0.002);
    EXPECT_EQ(paced.log.count("come at 60."), 1);
    EXPECT_EQ(paced.log.lines.size(), 1u);
}

TEST(RefreshPacer, FollowsAnotherDisplayAndCountsOn) {
    Paced paced;
    Refresh last = paced.frame();
    last = paced.frame();
    auto other = std::make_shared<ScriptedDisplay>(paced.clock, kPeriod / 2);
    paced.pacer.follow(std::make_unique<ScriptedSource>(other), kSeconds / 2);
    const Refresh first = paced.frame();
    EXPECT_EQ(first.count, last.count + 1);
    EXPECT_EQ(paced.frame().time - first.time, kPeriod / 2);
    EXPECT_NEAR(paced.pacer.measuredPeriod(), kSeconds / 2, 1e-6);
    paced.pacer.follow(nullptr, kSeconds);
    EXPECT_STREQ(paced.pacer.throttleName(), RefreshPacer::kDeadlines);
    const Refresh onDeadline = paced.frame();
    EXPECT_EQ(paced.frame().time, onDeadline.time + kPeriod);
    EXPECT_EQ(paced.pacer.missed(), 0u);
}

TEST(RefreshPacer, EndsEveryWaitWhenWoken) {
    class Silent : public vx::RefreshSource {
        void ask() override {}
        Outcome wait(std::uint64_t until, int wakeDescriptor, Refresh&) override {
            return vx::Clock::current().sleepUntil(until, wakeDescriptor) ? Outcome::silent : Outcome::woken;
        }
        const char* name() const override { return "nothing"; }
    };
    for (const bool withSource : {false, true}) {
        RefreshPacer pacer(withSource ? std::make_unique<Silent>() : nullptr, 1000.0);
        std::thread waiting([&] { EXPECT_FALSE(pacer.wait()); });
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        pacer.wake();
        waiting.join();
        EXPECT_FALSE(pacer.wait());
    }
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreVideo/private/RefreshPacer.h>
#include <tests/support/LogCollector.h>
#include <tests/support/SteppedClock.h>

#include <gtest/gtest.h>

#include <thread>

using namespace vx::test;
using vx::Refresh;
using vx::RefreshPacer;

namespace {

constexpr std::uint64_t kMillisecond = 1000000;
constexpr std::uint64_t kPeriod = 16666667; // 60 Hz
constexpr double kSeconds = kPeriod * 1e-9;

// A display whose refreshes go by a stepped clock, number n at n times its period, and which may fall silent.
struct Display {
    vx::Clock& clock;
    std::uint64_t period = kPeriod;
    std::uint64_t silentUntil = 0;
    int questions = 0;

    std::uint64_t nextAfter(std::uint64_t time) const { return (time / period + 1) * period; }
};

class Source final : public vx::RefreshSource {
public:
    explicit Source(Display& display) : m_Display(display) {}

    void ask() override {
        ++m_Display.questions;
        m_Answer = m_Display.nextAfter(m_Display.clock.now());
    }
    Outcome wait(std::uint64_t until, int wakeDescriptor, Refresh& refresh) override {
        std::uint64_t answer = m_Answer;
        if (answer != 0 && answer < m_Display.silentUntil)
            answer = m_Display.nextAfter(m_Display.silentUntil);
        const bool answers = answer != 0 && answer <= until;
        if (!m_Display.clock.sleepUntil(answers ? answer : until, wakeDescriptor))
            return Outcome::woken;
        if (!answers)
            return Outcome::silent;
        m_Answer = 0;
        refresh = {answer, answer / m_Display.period, 0};
        return Outcome::refresh;
    }
    const char* name() const override { return "scripted events"; }

private:
    Display& m_Display;
    std::uint64_t m_Answer = 0;
};

struct Paced {
    SteppedClock clock;
    LogCollector log;
    Display display{clock};
    RefreshPacer pacer{std::make_unique<Source>(display), kSeconds};

    Refresh frame(std::uint64_t callback = 0) {
        const Refresh refresh = pacer.wait().value();
        clock.step(callback);
        return refresh;
    }
};

} // namespace

// Eight seconds of callbacks, some of which take longer than a refresh.
TEST(RefreshPacer, TakesTimeAndNumberFromTheDisplayAndLosesNoCountOfItsRefreshes) {
    for (const std::uint64_t callback : {0, 5, 16, 20, 25, 40}) {
        SCOPED_TRACE(callback);
        Paced paced;
        const Refresh first = paced.frame();
        EXPECT_EQ(paced.display.questions, 2) << "a callback that waits for the retrace itself loses none";
        Refresh last = first;
        std::uint64_t callbacks = 1;
        for (; last.time < first.time + 480 * kPeriod; ++callbacks) {
            const Refresh next = paced.frame(callback * kMillisecond);
            ASSERT_GT(next.count, last.count);
            ASSERT_EQ(next.time % kPeriod, 0u);
            ASSERT_LT(paced.clock.now() - callback * kMillisecond - next.time, kPeriod) << "an old refresh";
            last = next;
        }
        EXPECT_EQ(last.count - first.count, (last.time - first.time) / kPeriod);
        EXPECT_EQ(paced.pacer.missed() + callbacks, last.count - first.count + 1);
        EXPECT_NEAR(paced.pacer.measuredPeriod(), kSeconds, kSeconds * 0.001);
    }
}

TEST(RefreshPacer, HoldsTheBeatWhileTheDisplayIsSilentAndComesBackWithTheFirstAnswer) {
    Paced paced;
    Refresh last;
    for (int stall = 0; stall < 3; ++stall) {
        for (int i = 0; i < 5; ++i)
            last = paced.frame();
        paced.display.silentUntil = paced.clock.now() + 250 * kMillisecond;
        const std::uint64_t stalledAt = last.time;
        int held = 0;
        for (; (last = paced.frame()).time < paced.display.silentUntil; ++held)
            EXPECT_EQ((last.time - stalledAt) % kPeriod, 0u);
        EXPECT_GE(held, 10) << "frames go on after the first few refreshes";
        EXPECT_EQ(last.time, stalledAt + 15 * kPeriod) << "the first refresh after the silence";
        EXPECT_STREQ(paced.pacer.throttleName(), "scripted events");
        EXPECT_EQ(paced.frame().count, last.count + 1);
    }
    EXPECT_EQ(paced.log.count("hold the beat until they come back"), 3);
    EXPECT_EQ(paced.log.count("are back"), 3);
    EXPECT_EQ(last.count, (last.time - vx::Clock::kSecond) / kPeriod + 1) << "none counted twice or lost";
    paced.display.silentUntil = 1ull << 62;
    const int before = paced.display.questions;
    for (int i = 0; i < 300; ++i)
        paced.frame();
    EXPECT_GE(paced.display.questions - before, 3) << "it asks again in a long silence";
    EXPECT_LE(paced.display.questions - before, 10) << "and not at each beat";
}

TEST(RefreshPacer, FollowsAnotherDisplayCountsOnAndBelievesWhatItMeasures) {
    Paced paced;
    Display other{paced.clock, kPeriod / 2};
    paced.frame();
    const Refresh last = paced.frame();
    paced.pacer.follow(std::make_unique<Source>(other), 1.0 / 75);
    const Refresh first = paced.frame();
    EXPECT_EQ(first.count, last.count + 1);
    EXPECT_EQ(first.period, 13333333u) << "until it knows better";
    EXPECT_EQ(paced.frame().time - first.time, kPeriod / 2);
    for (int i = 0; i < 200; ++i)
        paced.frame();
    EXPECT_NEAR(paced.frame().period, kPeriod / 2, kPeriod * 0.002);
    EXPECT_NEAR(paced.pacer.measuredPeriod(), kSeconds / 2, 1e-6);
    EXPECT_EQ(paced.log.count("come at 1"), 1);
    paced.pacer.follow(nullptr, kSeconds);
    EXPECT_STREQ(paced.pacer.throttleName(), RefreshPacer::kDeadlines);
    const Refresh onDeadline = paced.frame();
    EXPECT_EQ(paced.frame().time, onDeadline.time + kPeriod);
    EXPECT_EQ(paced.pacer.missed(), 0u);
}

TEST(RefreshPacer, EndsEveryWaitWhenWoken) {
    Display silent{vx::Clock::current(), kPeriod, 1ull << 62};
    for (const bool withSource : {false, true}) {
        RefreshPacer pacer(withSource ? std::make_unique<Source>(silent) : nullptr, 1000.0);
        std::thread waiting([&] { EXPECT_FALSE(pacer.wait()); });
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
        pacer.wake();
        waiting.join();
        EXPECT_FALSE(pacer.wait());
    }
}

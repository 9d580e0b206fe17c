// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/RefreshSource.h>
#include <tests/support/SteppedClock.h>

#include <algorithm>
#include <memory>

namespace vx::test {

/// A display whose refreshes go by a stepped clock, number n at n times its period, and which may fall
/// silent.
struct ScriptedDisplay {
    explicit ScriptedDisplay(SteppedClock& clock, std::uint64_t period) : clock(clock), period(period) {}

    /// Answers nothing before that time.
    std::uint64_t silentUntil = 0;
    int questions = 0;
    SteppedClock& clock;
    std::uint64_t period;
};

/// A source of its refreshes.
class ScriptedSource final : public RefreshSource {
public:
    explicit ScriptedSource(std::shared_ptr<ScriptedDisplay> display) : m_Display(std::move(display)) {}

    void ask() override {
        ++m_Display->questions;
        m_Answer = nextAfter(m_Display->clock.now());
    }
    Outcome wait(std::uint64_t until, int wakeDescriptor, Refresh& refresh) override {
        SteppedClock& clock = m_Display->clock;
        std::uint64_t answer = m_Answer;
        if (answer != 0 && answer < m_Display->silentUntil)
            answer = nextAfter(m_Display->silentUntil);
        if (answer == 0 || answer > until)
            return clock.sleepUntil(until, wakeDescriptor) ? Outcome::silent : Outcome::woken;
        if (!clock.sleepUntil(answer, wakeDescriptor))
            return Outcome::woken;
        m_Answer = 0;
        refresh = {answer, answer / m_Display->period, 0};
        return Outcome::refresh;
    }
    const char* name() const override { return "scripted events"; }

private:
    std::uint64_t nextAfter(std::uint64_t time) const {
        return (time / m_Display->period + 1) * m_Display->period;
    }

    std::shared_ptr<ScriptedDisplay> m_Display;
    std::uint64_t m_Answer = 0;
};

} // namespace vx::test

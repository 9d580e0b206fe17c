// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreVideo/private/RefreshPacer.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace vx {

namespace {

constexpr double kSecond = static_cast<double>(Clock::kSecond);
// Refreshes without an answer after which the clock takes the beat over.
constexpr std::uint64_t kPatience = 4;
// Beats held after which the question is asked again: the server may have lost it with a window or a mode.
constexpr int kBeatsPerQuestion = 60;
// Weight of one measurement in the smoothed period.
constexpr double kWeight = 0.05;
// How many refreshes make a measured period more than chance.
constexpr std::uint64_t kEnoughRefreshes = 60;
// A measured rate that differs by more than this from the announced one is the true one.
constexpr double kDisbelief = 0.03;

std::uint64_t nanoseconds(double seconds) {
    return std::max<std::uint64_t>(1, static_cast<std::uint64_t>(std::llround(seconds * kSecond)));
}

double secondsPerRefresh(const Refresh& from, const Refresh& to) {
    return static_cast<double>(to.time - from.time) / static_cast<double>(to.count - from.count) / kSecond;
}

} // namespace

RefreshPacer::RefreshPacer(std::unique_ptr<RefreshSource> source, double period)
    : m_WakeDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    use(std::move(source), period);
}

RefreshPacer::~RefreshPacer() {
    close(m_WakeDescriptor);
}

void RefreshPacer::use(std::unique_ptr<RefreshSource> source, double period) {
    m_Source = std::move(source);
    m_Period = nanoseconds(period);
    m_Deadline = 0;
    m_Asked = m_Holding = m_NumberKnown = false;
    m_Measured = {};
    m_Throttle = m_Source ? m_Source->name() : kDeadlines;
    m_MeasuredPeriod = period;
}

void RefreshPacer::follow(std::unique_ptr<RefreshSource> source, double period) {
    use(std::move(source), period);
    // The beat goes on from where it was.
    m_Deadline = m_Last.time;
}

void RefreshPacer::wake() {
    m_Ending = true;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(m_WakeDescriptor, &one, sizeof one);
}

std::optional<Refresh> RefreshPacer::wait() {
    std::optional<Refresh> refresh;
    if (!m_Ending)
        refresh = m_Source ? waitForSource() : waitForDeadline();
    if (m_Ending || !refresh)
        return std::nullopt;
    if (m_Last.time != 0 && refresh->count > m_Last.count + 1)
        m_Missed += refresh->count - m_Last.count - 1;
    m_Last = *refresh;
    return refresh;
}

std::optional<Refresh> RefreshPacer::waitForSource() {
    if (!std::exchange(m_Asked, true))
        m_Source->ask();
    const std::uint64_t until = m_Holding ? nextDeadline() : Clock::current().now() + kPatience * m_Period;
    Refresh answer;
    switch (m_Source->wait(until, m_WakeDescriptor, answer)) {
        case RefreshSource::Outcome::woken:
            return std::nullopt;
        case RefreshSource::Outcome::silent:
            return m_Holding ? holdBeat() : hold();
        case RefreshSource::Outcome::refresh:
            break;
    }
    m_Source->ask();
    if (m_Holding)
        resume();
    return numbered(answer);
}

std::optional<Refresh> RefreshPacer::hold() {
    NSLog("Display link: no %s for %llu refreshes; %s hold the beat until they come back", m_Source->name(),
          static_cast<unsigned long long>(kPatience), kDeadlines);
    m_Holding = true;
    m_HeldBeats = 0;
    m_Deadline = m_Last.time;
    m_Throttle = kDeadlines;
    return waitForDeadline();
}

Refresh RefreshPacer::holdBeat() {
    if (++m_HeldBeats % kBeatsPerQuestion == 0)
        m_Source->ask();
    return beat();
}

void RefreshPacer::resume() {
    NSLog("Display link: %s are back", m_Source->name());
    m_Holding = m_NumberKnown = false;
    m_Measured = {};
    m_Throttle = m_Source->name();
}

// The number that goes on from the last one, and the latest refresh that has been by now: an answer may have
// waited for the end of a long callback.
Refresh RefreshPacer::numbered(const Refresh& answer) {
    if (answer.period)
        m_Period = answer.period;
    if (!std::exchange(m_NumberKnown, true)) {
        const std::uint64_t since = m_Last.time && answer.time > m_Last.time ? answer.time - m_Last.time : 0;
        m_NumberOffset = m_Last.count + std::max<std::uint64_t>(1, periodsIn(since)) - answer.count;
    }
    measure(answer);
    believeMeasurement();
    const std::uint64_t now = Clock::current().now();
    const std::uint64_t late = now > answer.time ? (now - answer.time) / m_Period : 0;
    const std::uint64_t number = answer.count + m_NumberOffset + late;
    return {answer.time + late * m_Period, std::max(number, m_Last.count + 1), m_Period};
}

// The first deadline on the beat that lies ahead. Those that a long callback has let go by are given up.
std::uint64_t RefreshPacer::nextDeadline() {
    const std::uint64_t now = Clock::current().now();
    if (m_Deadline == 0)
        m_Deadline = now;
    m_Deadline += m_Period;
    if (m_Deadline <= now)
        m_Deadline += ((now - m_Deadline) / m_Period + 1) * m_Period;
    return m_Deadline;
}

std::optional<Refresh> RefreshPacer::waitForDeadline() {
    if (!Clock::current().sleepUntil(nextDeadline(), m_WakeDescriptor))
        return std::nullopt;
    const Refresh refresh = beat();
    if (!m_Holding)
        measure({Clock::current().now(), refresh.count, 0});
    return refresh;
}

// The refresh of the deadline that has just been reached.
Refresh RefreshPacer::beat() const {
    const std::uint64_t since = m_Last.time ? m_Deadline - m_Last.time : m_Period;
    return {m_Deadline, m_Last.count + std::max<std::uint64_t>(1, periodsIn(since)), m_Period};
}

void RefreshPacer::measure(const Refresh& refresh) {
    if (m_Measured.time == 0)
        m_RunStart = refresh;
    else if (refresh.time > m_Measured.time && refresh.count > m_Measured.count)
        m_MeasuredPeriod =
            m_MeasuredPeriod + (secondsPerRefresh(m_Measured, refresh) - m_MeasuredPeriod) * kWeight;
    m_Measured = refresh;
}

// Under some servers the events come at a rate of their own, whatever the display announces.
void RefreshPacer::believeMeasurement() {
    if (m_Measured.count < m_RunStart.count + kEnoughRefreshes)
        return;
    const double measured = secondsPerRefresh(m_RunStart, m_Measured),
                 told = static_cast<double>(m_Period) / kSecond;
    m_RunStart = m_Measured;
    if (std::abs(measured - told) <= kDisbelief * told)
        return;
    NSLog("Display link: %s come at %.2f Hz, not at %.2f Hz", m_Source->name(), 1.0 / measured, 1.0 / told);
    m_Period = nanoseconds(measured);
    m_MeasuredPeriod = measured;
}

} // namespace vx

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
// Weight of one measurement, and how many make the measured period more than chance.
constexpr double kWeight = 0.05;
constexpr int kEnoughSamples = 60;
// A measured rate that differs by more than this from the announced one is the true one.
constexpr double kDisbelief = 0.03;

std::uint64_t nanoseconds(double seconds) {
    return std::max<std::uint64_t>(1, static_cast<std::uint64_t>(std::llround(seconds * kSecond)));
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
    m_Samples = 0;
    m_MeasuredTime = 0;
    m_Throttle = m_Source ? m_Source->name() : kDeadlines;
    m_Measured = period;
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
    m_MeasuredTime = 0;
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
    measure(answer.time, answer.count);
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
        measure(Clock::current().now(), refresh.count);
    return refresh;
}

// The refresh of the deadline that has just been reached.
Refresh RefreshPacer::beat() const {
    const std::uint64_t since = m_Last.time ? m_Deadline - m_Last.time : m_Period;
    return {m_Deadline, m_Last.count + std::max<std::uint64_t>(1, periodsIn(since)), m_Period};
}

void RefreshPacer::measure(std::uint64_t time, std::uint64_t count) {
    if (m_MeasuredTime != 0 && time > m_MeasuredTime && count > m_MeasuredCount) {
        const double period = static_cast<double>(time - m_MeasuredTime) /
                              static_cast<double>(count - m_MeasuredCount) / kSecond;
        m_Measured = m_Measured + (period - m_Measured) * kWeight;
        ++m_Samples;
    }
    m_MeasuredTime = time;
    m_MeasuredCount = count;
}

// Under some servers the events come at a rate of their own, whatever the display announces.
void RefreshPacer::believeMeasurement() {
    if (m_Samples < kEnoughSamples)
        return;
    m_Samples = 0;
    const double measured = m_Measured, told = static_cast<double>(m_Period) / kSecond;
    if (std::abs(measured - told) <= kDisbelief * told)
        return;
    NSLog("Display link: %s come at %.2f Hz, not at %.2f Hz", m_Source->name(), 1.0 / measured, 1.0 / told);
    m_Period = nanoseconds(measured);
}

} // namespace vx

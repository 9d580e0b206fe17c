// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreVideo/private/RefreshPacer.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <ctime>

namespace vx {

namespace {

constexpr std::uint64_t kSecond = 1000000000;
// Silence of the event source after which the clock takes over.
constexpr double kPatience = 4.0;

void sleepUntil(std::uint64_t time) {
    const std::timespec until{static_cast<std::time_t>(time / kSecond), static_cast<long>(time % kSecond)};
    while (clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
}

} // namespace

RefreshPacer::RefreshPacer(std::unique_ptr<RefreshSource> source, double period)
    : m_Source(std::move(source)),
      m_Period(static_cast<std::uint64_t>(std::llround(period * kSecond))),
      m_WakeDescriptor(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
      m_Throttle(m_Source ? m_Source->name() : kDeadlines),
      m_Measured(period) {}

RefreshPacer::~RefreshPacer() {
    close(m_WakeDescriptor);
}

std::uint64_t RefreshPacer::now() {
    std::timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return static_cast<std::uint64_t>(time.tv_sec) * kSecond + time.tv_nsec;
}

void RefreshPacer::wake() {
    m_Ending = true;
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = write(m_WakeDescriptor, &one, sizeof one);
}

std::uint64_t RefreshPacer::wait() {
    std::uint64_t time = m_Source ? waitForEvent() : 0;
    if (!time && !m_Ending)
        time = waitForDeadline();
    if (m_Ending)
        return 0;
    measure(time);
    return time;
}

std::uint64_t RefreshPacer::waitForEvent() {
    if (!m_Asked)
        m_Source->ask();
    m_Asked = false;
    switch (m_Source->wait(kPatience * m_Period / kSecond, m_WakeDescriptor)) {
        case RefreshSource::Outcome::refresh:
            m_Source->ask();
            m_Asked = true;
            return now();
        case RefreshSource::Outcome::silent:
            fallBack();
            return 0;
        case RefreshSource::Outcome::woken:
            break;
    }
    return 0;
}

void RefreshPacer::fallBack() {
    NSLog("Display link: no %s for %.0f refreshes; going on with %s", m_Source->name(), kPatience,
          kDeadlines);
    m_Source.reset();
    m_Throttle = kDeadlines;
}

std::uint64_t RefreshPacer::waitForDeadline() {
    const std::uint64_t before = now();
    if (m_Deadline == 0)
        m_Deadline = before;
    m_Deadline += m_Period;
    if (m_Deadline <= before) {
        // The callback took longer than a refresh: those that went by are given up, and the beat is kept.
        const std::uint64_t late = (before - m_Deadline) / m_Period + 1;
        m_Deadline += late * m_Period;
    }
    sleepUntil(m_Deadline);
    return m_Deadline;
}

void RefreshPacer::measure(std::uint64_t refresh) {
    const std::uint64_t woken = now();
    if (m_LastRefresh != 0) {
        const std::uint64_t refreshes = (refresh - m_LastRefresh + m_Period / 2) / m_Period;
        if (refreshes > 1)
            m_Missed += refreshes - 1;
        else
            m_Measured =
                m_Measured + (static_cast<double>(woken - m_LastWoken) / kSecond - m_Measured) * 0.05;
    }
    m_LastRefresh = refresh;
    m_LastWoken = woken;
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/private/Clock.h>

#include <poll.h>

#include <atomic>
#include <ctime>

namespace vx {

namespace {

std::timespec toTimespec(std::uint64_t time) {
    return {static_cast<std::time_t>(time / Clock::kSecond), static_cast<long>(time % Clock::kSecond)};
}

class SystemClock final : public Clock {
public:
    std::uint64_t now() override {
        std::timespec time{};
        clock_gettime(CLOCK_MONOTONIC, &time);
        return static_cast<std::uint64_t>(time.tv_sec) * kSecond + static_cast<std::uint64_t>(time.tv_nsec);
    }

    // Looks at the time after each wait, so that neither a signal nor a rounded timeout cuts the sleep short.
    bool sleepUntil(std::uint64_t time, int wakeDescriptor) override {
        pollfd descriptor{wakeDescriptor, POLLIN, 0};
        std::uint64_t present = now();
        do {
            const std::timespec rest = toTimespec(time > present ? time - present : 0);
            if (ppoll(&descriptor, 1, &rest, nullptr) > 0)
                return false;
            present = now();
        } while (present < time);
        return true;
    }
};

constinit SystemClock systemClock;
constinit std::atomic<Clock*> currentClock{&systemClock};

} // namespace

Clock& Clock::current() {
    return *currentClock.load(std::memory_order_acquire);
}

Clock& Clock::system() {
    return systemClock;
}

Clock* Clock::replace(Clock* clock) {
    Clock* former = currentClock.exchange(clock ? clock : &systemClock, std::memory_order_acq_rel);
    return former == &systemClock ? nullptr : former;
}

} // namespace vx

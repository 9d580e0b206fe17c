// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSDate.h>

#include <VX_Platform/Foundation/private/Clock.h>

#include <chrono>

namespace {

// The date at which the system's monotonic clock stood at zero.
double dateOfMonotonicZero() {
    using seconds = std::chrono::duration<double>;
    constexpr double kUnixToReference = 978307200.0;
    const seconds sinceUnix = std::chrono::system_clock::now().time_since_epoch();
    return sinceUnix.count() - kUnixToReference -
           static_cast<double>(vx::Clock::system().now()) / vx::Clock::kSecond;
}

} // namespace

double NSDate::timeIntervalSinceReferenceDate() {
    static const double zero = dateOfMonotonicZero();
    return zero + static_cast<double>(vx::Clock::current().now()) / vx::Clock::kSecond;
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSDate.h>

#include <chrono>

double NSDate::timeIntervalSinceReferenceDate() {
    using namespace std::chrono;
    using seconds_d = duration<double>;
    constexpr double kUnixToReference = 978307200.0;
    static const auto steadyStart = steady_clock::now();
    static const double start = seconds_d(system_clock::now().time_since_epoch()).count() - kUnixToReference;
    return start + seconds_d(steady_clock::now() - steadyStart).count();
}

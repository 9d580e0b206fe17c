// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <thread>

namespace vx::test {

inline void rest() {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
}

/// Waits up to ten seconds for the condition, and says whether it came; `between` runs after each look at it.
template <class Condition, class Between = void (*)()>
bool waitFor(Condition condition, Between between = rest) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        between();
    }
    return true;
}

} // namespace vx::test

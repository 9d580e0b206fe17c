// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/private/FailureLog.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/private/Clock.h>

#include <utility>

namespace vx {

namespace {

// As long without a failure is good again: a hook that fails every other frame is not news each time.
constexpr std::uint64_t kGood = 10 * Clock::kSecond;
constexpr std::uint64_t kBetweenLines = 60 * Clock::kSecond;

} // namespace

void FailureLog::note(const char* text, std::uint64_t now) {
    const bool isNews = m_LastFailure == 0 || now - m_LastFailure >= kGood;
    m_LastFailure = now;
    if (!isNews && now - m_LastLine < kBetweenLines) {
        ++m_Untold;
        return;
    }
    m_LastLine = now;
    const unsigned untold = std::exchange(m_Untold, 0);
    if (untold)
        NSLog("A render hook failed and its frame was given up: %s (and %u times since the last line)", text,
              untold);
    else
        NSLog("A render hook failed and its frame was given up: %s", text);
}

} // namespace vx

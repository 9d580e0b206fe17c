// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/private/FailureLog.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <utility>

namespace vx {

namespace {

// As long without a failure is good again: a hook that fails every other frame is not news each time.
constexpr std::uint64_t kGood = 10 * Clock::kSecond;

} // namespace

void FailureLog::note(const char* text, std::uint64_t now) {
    if (now - std::exchange(m_LastFailure, now) >= kGood)
        m_Lines.beginAnew();
    const std::optional<unsigned> untold = m_Lines.ask(now);
    if (untold && *untold)
        NSLog("A render hook failed and its frame was given up: %s (and %u times since the last line)", text,
              *untold);
    else if (untold)
        NSLog("A render hook failed and its frame was given up: %s", text);
}

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <cstdint>

namespace vx {

/// Counts drawn frames and tells their true rate, taken over half a second or more at a time. Written by the
/// thread that draws, read by any.
class FrameMeter {
public:
    /// `now` in nanoseconds.
    void start(std::uint64_t now) {
        m_Frames = 0;
        m_Rate = 0.0;
        m_RunStart = now;
        m_RunFrames = 0;
    }
    void noteFrame(std::uint64_t now) {
        const std::uint64_t frames = ++m_Frames;
        if (now < m_RunStart + kRun)
            return;
        m_Rate = static_cast<double>(frames - m_RunFrames) * 1e9 / static_cast<double>(now - m_RunStart);
        m_RunStart = now;
        m_RunFrames = frames;
    }
    std::uint64_t frames() const { return m_Frames; }
    double rate() const { return m_Rate; }

private:
    static constexpr std::uint64_t kRun = 500000000;

    std::atomic<std::uint64_t> m_Frames{0};
    std::atomic<double> m_Rate{0.0};
    std::uint64_t m_RunStart = 0;
    std::uint64_t m_RunFrames = 0;
};

} // namespace vx

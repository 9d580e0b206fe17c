// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/output/private/FrameSink.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace vx {

/// What became of the frames of a recording.
struct FrameCounts {
    std::atomic<std::uint64_t> written{0}, dropped{0};
};

/// The thread that writes recorded frames, one after the other.
class FrameWriter {
public:
    /// Starts it; throws `std::system_error` where there is none to be had. `counts` is borrowed.
    FrameWriter(std::unique_ptr<FrameSink> sink, FrameCounts& counts);
    /// Waits for what was given to be written.
    ~FrameWriter();
    FrameWriter(const FrameWriter&) = delete;
    FrameWriter& operator=(const FrameWriter&) = delete;

    /// Gives a frame, which stays the caller's and untouched until `done` counts it.
    void give(const std::uint8_t* pixels);
    /// Number of the frames given that are done with, in that order, written or lost. `wait` waits until
    /// there is one more than `known`.
    std::uint64_t done(std::uint64_t known, bool wait);

    /// Waits for what was given and ends the sink; the result is the sink's.
    bool finish();

private:
    void run();
    void join();

    std::unique_ptr<FrameSink> m_Sink;
    FrameCounts& m_Counts;
    std::mutex m_Lock;
    std::condition_variable m_Changed;
    std::deque<const std::uint8_t*> m_Waiting;
    std::uint64_t m_Done = 0;
    bool m_Ending = false;
    std::thread m_Thread;
};

} // namespace vx

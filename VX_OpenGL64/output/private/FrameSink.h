// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vx {

/// Where recorded frames go. Written to by one thread, which has SIGPIPE blocked.
class FrameSink {
public:
    virtual ~FrameSink() = default;
    /// Writes a frame of 4 bytes a pixel, blue first, the bottom row first. False, with a line in the log for
    /// the first time, when it is lost.
    virtual bool write(const std::uint8_t* pixels) = 0;
    /// Ends it; false when what was written is not all there is to it.
    virtual bool finish() = 0;

protected:
    FrameSink() = default;
    FrameSink(const FrameSink&) = delete;
    FrameSink& operator=(const FrameSink&) = delete;
};

/// `directory`/frame_00000.png and so on; null, with a line in the log, when it cannot be made.
std::unique_ptr<FrameSink> makePictureSink(const std::string& directory, int width, int height);

/// The standard input of `command`; null, with a line in the log, when it cannot be run.
std::unique_ptr<FrameSink> makeProgramSink(const std::string& command, int width, int height);

} // namespace vx

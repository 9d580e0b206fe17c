// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLMainView.h>
#include <VX_OpenGL64/host/private/FrameMeter.h>

#include <condition_variable>
#include <thread>

/// What a view measures of its frames, and what it has been asked to do with the next one.
struct VX_GLMainView::Internals {
    vx::FrameMeter meter;
    std::atomic<bool> followsSize{false};
    std::atomic<bool> stepped{false};

    /// Nanoseconds at which drawing began, and the seconds of the present frame.
    std::atomic<std::uint64_t> drawingSince{0};
    std::atomic<double> frameTime{0.0};
    std::uint64_t steppedFrames = 0;
    /// The thread that is inside a frame, if one is.
    std::atomic<std::thread::id> frameThread{};

    /// A wish for a picture of the next frame.
    struct SaveRequest {
        const char* path;
        bool done = false;
        bool saved = false;
    };
    std::mutex saveLock;
    std::condition_variable saveDone;
    SaveRequest* save = nullptr;

    bool waitForSave(const char* path);

    /// The view, for what may outlive it.
    std::shared_ptr<VX_GLMainView*> self;
    void tellIfNeverShown(VX_GLMainView* view);
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLHost.h>

#include <functional>
#include <string>

/// What every example takes from its command line.
struct ExampleOptions {
    static constexpr const char* kUsage =
        "[--headless FILE.png] [--size WxH] [--frames N] [--platform NAME] [--fps]";

    VX_GLHostOptions host;
    const char* picture = nullptr; ///< where the last frame goes, drawn without a display
    int frames = 0;                ///< how many are drawn; 0: a window's until it is closed, a picture's 60
    bool printsRate = false;

    /// Whether the frame for that second is the last one of a picture.
    bool endsAt(double time) const { return picture && time >= (pictureFrames() - 1) / 60.0; }
    int pictureFrames() const { return frames ? frames : 60; }
    /// FILE_NAME.png for the picture of another view than that of FILE.png.
    std::string pictureOf(const char* name) const;

    /// Takes the word at `i`, and the value behind it, on which `i` is left. False when it is none of these
    /// options or its value does not fit.
    bool take(int count, char** words, int& i);
};

/// Shows the pipeline in a window, or writes its picture: frames at 60 a second from time 0 on, drawn by
/// hand, so that they are the same on every run, without a display unless a platform is named. `prepare` gets
/// the open host, for its event handler. Returns the status for `main`.
int runExample(VX_GLRenderpipeline* pipeline, const ExampleOptions& options,
               const std::function<void(VX_GLHost&)>& prepare = {});

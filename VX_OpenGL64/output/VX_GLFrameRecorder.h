// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <cstdint>
#include <memory>

class VX_GLRenderTarget;
namespace vx {
class FrameSink;
}

/// What a recorder does with a frame when those before it are not written yet.
enum class VX_GLFrameRecorderBehind {
    /// Gives it up and counts it: the view keeps its rate.
    drop,
    /// Waits: every frame is written, and the frame takes as long as that does.
    wait,
};

/// Takes finished frames out of GL and has them written by a thread of its own, as numbered PNG files or to
/// the standard input of another program. The frame that is taken does not wait for its pixels: they go into
/// one of a ring of pixel buffers, which the thread reads once GL has filled it.
///
/// Order of use, all of it on the thread that draws, in hooks of the view:
///
///     m_Recorder.OpenProgram("ffmpeg -y -f rawvideo -pix_fmt bgra -s 1280x720 -r 60 -i - show.mp4",
///                            1280, 720, VX_GLFrameRecorderBehind::drop); // doStartRender
///     m_Recorder.TakeFrame();                                              // end of renderPipeline
///     m_Recorder.Finish();                                                 // doStopRender
///
/// For a film that has every frame exactly, step the view by hand (`VX_GLMainView::StepFrame`) and let the
/// recorder wait. The calls need a GL 2.1 context current on the calling thread, always the same one or one
/// that shares with it; the recorder keeps that context alive until `Finish`. The counts may be asked on any
/// thread.
class VX_EXPORT VX_GLFrameRecorder {
public:
    /// Closed; makes no GL call.
    VX_GLFrameRecorder();
    /// As `Finish`. Without a context current the buffers stay until theirs ends.
    ~VX_GLFrameRecorder();
    VX_GLFrameRecorder(const VX_GLFrameRecorder&) = delete;
    VX_GLFrameRecorder& operator=(const VX_GLFrameRecorder&) = delete;

    /// Begins a recording of `width` x `height` pixels as `directory`/frame_00000.png and so on, without
    /// alpha; the numbers count the files, so that a frame that was dropped leaves no gap. The directory
    /// (copied) is made where it is missing. `buffers` is the length of the ring, 2 to 64: what may be on its
    /// way at a time, each buffer with 4 bytes a pixel. A recording that runs is finished first. False, with
    /// a line in the log, for a size that is not positive or too large, without a thread to be had, and when
    /// the directory cannot be made. GL: glGenBuffers, glBindBuffer, glBufferData.
    bool OpenPictures(const char* directory, int width, int height, VX_GLFrameRecorderBehind behind,
                      int buffers = 4);
    /// The same into the standard input of `command`, which /bin/sh runs: 4 bytes a pixel, blue, green, red,
    /// alpha, the top row first, frame after frame without a header. When the program ends or closes its
    /// input, one line is logged and the frames that follow are dropped.
    bool OpenProgram(const char* command, int width, int height, VX_GLFrameRecorderBehind behind,
                     int buffers = 4);

    /// Takes what the view has drawn, of the size given above from the lower left corner of the back buffer,
    /// or of the front one where the surface has no other.
    /// False when the frame was dropped or nothing is open. Every binding and setting is as before
    /// afterwards. GL: glReadPixels into a pixel buffer, glFenceSync, glClientWaitSync, glMapBuffer,
    /// glUnmapBuffer.
    bool TakeFrame();
    /// The same of colour attachment `index` of a target; false, with a line in the log, when it has none. A
    /// multisampled one has none: draw its texture (`DrawFullScreenMSAA`) and take the view's frame.
    bool TakeFrame(VX_GLRenderTarget* target, int index);

    /// Has all that was taken written, ends the thread, the program's input and, if it ends within 30
    /// seconds, the program. What is not written when a program has taken nothing for 10 seconds is dropped.
    /// True when everything that was taken is written and a program has ended with 0; true when nothing is
    /// open. GL: glClientWaitSync, glMapBuffer, glUnmapBuffer, glDeleteSync, glDeleteBuffers.
    bool Finish();

    /// Whether a recording runs.
    bool IsOpen() const { return m_Recording != nullptr; }
    /// Frames of this recording, or the last one, that a file or program has got, and those that were lost;
    /// what is on its way counts in neither.
    std::uint64_t GetWrittenFrames() const;
    std::uint64_t GetDroppedFrames() const;

private:
    struct VX_HIDDEN Recording;
    struct Counts;
    bool open(std::unique_ptr<vx::FrameSink> sink, int width, int height, VX_GLFrameRecorderBehind behind,
              int buffers);
    bool prepare(int width, int height);
    bool makeRoom();

    /// Ahead of what its thread counts in.
    std::unique_ptr<Counts> m_Counts;
    std::unique_ptr<Recording> m_Recording;
};

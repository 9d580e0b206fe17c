// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/OpenGL/CGL.h>

#include <cstdint>

/// One refresh of a display.
struct CVTimeStamp {
    /// Nanoseconds on the monotonic clock (`CLOCK_MONOTONIC`).
    std::uint64_t hostTime = 0;
    /// Nanoseconds from one refresh to the next.
    std::uint64_t videoRefreshPeriod = 0;
    /// Refreshes since the link started, those that no callback was made for included.
    std::uint64_t frameCount = 0;
};

/// Result of an operation on a display link.
using CVReturn = std::int32_t;
/// Flags of a callback; none are used.
using CVOptionFlags = std::uint64_t;
/// It was done.
inline constexpr CVReturn kCVReturnSuccess = 0;
/// The system gives no more threads.
inline constexpr CVReturn kCVReturnAllocationFailed = -6664;
/// A link or context is null.
inline constexpr CVReturn kCVReturnInvalidArgument = -6661;
/// A link that runs was to be started, or one that does not was to be stopped.
inline constexpr CVReturn kCVReturnDisplayLinkAlreadyRunning = -6671;
inline constexpr CVReturn kCVReturnDisplayLinkNotRunning = -6672;
/// A link cannot be started without a callback.
inline constexpr CVReturn kCVReturnDisplayLinkCallbacksNotSet = -6673;

/// Handle on a display link: a thread that calls back at the refresh rate of a display.
using CVDisplayLinkRef = struct CVDisplayLink*;

/// Called on the link's thread for each refresh: `now` is the time of the call, `output` that of the refresh
/// the frame is drawn for. Both are valid during the call only. `flagsIn` is 0; `flagsOut` and the result are
/// ignored. A context that is left current when the link ends is released from its thread.
using CVDisplayLinkOutputCallback = CVReturn (*)(CVDisplayLinkRef link, const CVTimeStamp* now,
                                                 const CVTimeStamp* output, CVOptionFlags flagsIn,
                                                 CVOptionFlags* flagsOut, void* user);

// The operations on one link are not synchronised with each other: a link belongs to one thread at a time,
// but for what its own callback may do. None of them needs a context.

/// Makes a link on the main display, stopped, at 60 Hz where there is no display; starts the platform if need
/// be. Any thread. Stores the link, which the caller releases, and returns `kCVReturnSuccess`;
/// `kCVReturnInvalidArgument` for a null `link`.
VX_EXPORT CVReturn CVDisplayLinkCreateWithActiveCGDisplays(CVDisplayLinkRef* link);

/// Ties a link to the display that shows the context's view. While it runs it follows the view: another
/// context (by another call of this), window, display or rate is taken over with the next refresh, and the
/// count of refreshes goes on. The context is not retained; the pixel format is ignored and may be null. Any
/// thread. `kCVReturnInvalidArgument` for a null link or context.
VX_EXPORT CVReturn CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(CVDisplayLinkRef link,
                                                                     CGLContextObj context,
                                                                     CGLPixelFormatObj pixelFormat);

/// Sets what a stopped link calls, and the pointer it hands on. Any thread. `kCVReturnInvalidArgument` for a
/// null link.
VX_EXPORT CVReturn CVDisplayLinkSetOutputCallback(CVDisplayLinkRef link, CVDisplayLinkOutputCallback callback,
                                                  void* user);

/// Starts the link's thread; one line in the log tells rate and throttle when they have changed. The
/// display's own events pace it where there are any, else absolute deadlines of the monotonic clock. While
/// the events are missing (a stalled server, a hidden window) the clock holds the beat, and the first event
/// brings them back. Any thread. `kCVReturnInvalidArgument`, `kCVReturnDisplayLinkAlreadyRunning`,
/// `kCVReturnDisplayLinkCallbacksNotSet` or, with a line in the log, `kCVReturnAllocationFailed` when it
/// cannot start.
VX_EXPORT CVReturn CVDisplayLinkStart(CVDisplayLinkRef link);

/// Stops the link and waits for its thread: no callback begins afterwards, and none is running, unless it is
/// called from the callback itself: then that one is the last. Any thread. `kCVReturnInvalidArgument` or
/// `kCVReturnDisplayLinkNotRunning` when there is nothing to stop.
VX_EXPORT CVReturn CVDisplayLinkStop(CVDisplayLinkRef link);

/// Stops and gives up the link; null does nothing. Any thread.
VX_EXPORT void CVDisplayLinkRelease(CVDisplayLinkRef link);

/// Whether the link has been started and not stopped; false for null.
VX_EXPORT bool CVDisplayLinkIsRunning(CVDisplayLinkRef link);

/// Seconds from one refresh to the next: as measured while running, smoothed over some twenty refreshes; the
/// display's announced period before that; 0 for null.
VX_EXPORT double CVDisplayLinkGetActualOutputVideoRefreshPeriod(CVDisplayLinkRef link);

/// The throttle at work, exactly one: "Present events" or "absolute deadlines". A literal, never null.
VX_EXPORT const char* CVDisplayLinkGetThrottleName(CVDisplayLinkRef link);

/// Refreshes since the start that went by without a callback, because the one before was still running; 0 for
/// null.
VX_EXPORT std::uint64_t CVDisplayLinkGetMissedRefreshes(CVDisplayLinkRef link);

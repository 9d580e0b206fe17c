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

using CVReturn = std::int32_t;
using CVOptionFlags = std::uint64_t;
inline constexpr CVReturn kCVReturnSuccess = 0;
inline constexpr CVReturn kCVReturnInvalidArgument = -6661;
inline constexpr CVReturn kCVReturnDisplayLinkAlreadyRunning = -6671;
inline constexpr CVReturn kCVReturnDisplayLinkNotRunning = -6672;
inline constexpr CVReturn kCVReturnDisplayLinkCallbacksNotSet = -6673;

/// Handle on a display link: a thread that calls back at the refresh rate of a display.
using CVDisplayLinkRef = struct CVDisplayLink*;

/// Called on the link's thread for each refresh: `now` is the time of the call, `output` that of the refresh
/// the frame is drawn for. Both are valid during the call only.
using CVDisplayLinkOutputCallback = CVReturn (*)(CVDisplayLinkRef link, const CVTimeStamp* now,
                                                 const CVTimeStamp* output, CVOptionFlags flagsIn,
                                                 CVOptionFlags* flagsOut, void* user);

/// A link on the main display, stopped; the caller releases it. Waits for the end of a link's thread that was
/// stopped from its own callback. Any thread.
VX_EXPORT CVReturn CVDisplayLinkCreateWithActiveCGDisplays(CVDisplayLinkRef* link);
/// Ties the link to the display that shows the context's view, and follows the view to another window or
/// display while it runs. Before the start; the pixel format may be null.
VX_EXPORT CVReturn CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(CVDisplayLinkRef link,
                                                                     CGLContextObj context,
                                                                     CGLPixelFormatObj pixelFormat);
VX_EXPORT CVReturn CVDisplayLinkSetOutputCallback(CVDisplayLinkRef link, CVDisplayLinkOutputCallback callback,
                                                  void* user);
VX_EXPORT CVReturn CVDisplayLinkStart(CVDisplayLinkRef link);
/// No callback begins after this has returned, and none is running, unless it is called from the callback
/// itself: then that one is the last.
VX_EXPORT CVReturn CVDisplayLinkStop(CVDisplayLinkRef link);
/// Stops and gives up the link; null does nothing.
VX_EXPORT void CVDisplayLinkRelease(CVDisplayLinkRef link);
VX_EXPORT bool CVDisplayLinkIsRunning(CVDisplayLinkRef link);

/// Seconds from one refresh to the next, as measured while running; the display's nominal period before that.
VX_EXPORT double CVDisplayLinkGetActualOutputVideoRefreshPeriod(CVDisplayLinkRef link);
/// The throttle at work, exactly one: "Present events" or "absolute deadlines".
VX_EXPORT const char* CVDisplayLinkGetThrottleName(CVDisplayLinkRef link);
/// Refreshes that went by without a callback, because the one before was still running.
VX_EXPORT std::uint64_t CVDisplayLinkGetMissedRefreshes(CVDisplayLinkRef link);

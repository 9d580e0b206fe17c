// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>
#include <VX_Platform/VX_Export.h>

#include <cstddef>
#include <cstdint>

class NSMutableDictionary;

/// Names a display: the same one as long as it stays connected, also over being switched off and on. Never 0.
using CGDirectDisplayID = std::uint32_t;
/// A number of displays.
using CGDisplayCount = std::uint32_t;
/// Result of a question about displays.
using CGError = std::int32_t;
/// Names a display where its own name is asked for.
using io_service_t = std::uint32_t;

/// The question was answered.
inline constexpr CGError kCGErrorSuccess = 0;
/// There was nowhere to put the answer.
inline constexpr CGError kCGErrorIllegalArgument = 1001;
/// The one option of `IODisplayCreateInfoDictionary`: one name is enough.
inline constexpr std::uint32_t kIODisplayOnlyPreferredName = 0x200;

// All of these ask the window system afresh, start the platform if need be, and find no display where there
// is none. Any thread; no context needed, no GL calls.

/// Lists the displays that are on, the primary one first, mirrored ones as well: at most `capacity` of them
/// in `displays` (may be null where only the count is wanted), how many in `count`.
VX_EXPORT CGError CGGetActiveDisplayList(std::uint32_t capacity, CGDirectDisplayID* displays,
                                         CGDisplayCount* count);
/// The same for the displays that show the point, in pixels from the top left of the desktop.
VX_EXPORT CGError CGGetDisplaysWithPoint(CGPoint point, std::uint32_t capacity, CGDirectDisplayID* displays,
                                         CGDisplayCount* count);
/// Returns where the display lies on the desktop, in pixels; all zero for one that is off or gone.
VX_EXPORT CGRect CGDisplayBounds(CGDirectDisplayID display);
/// Return the display's size in pixels; 0 for one that is off or gone.
VX_EXPORT std::size_t CGDisplayPixelsWide(CGDirectDisplayID display);
VX_EXPORT std::size_t CGDisplayPixelsHigh(CGDirectDisplayID display);

/// Returns the display under the name by which `IODisplayCreateInfoDictionary` is asked for it.
VX_EXPORT io_service_t CGDisplayIOServicePort(CGDirectDisplayID display);
/// Returns a dictionary, the caller's to release. Under "DisplayProductName" it has a dictionary from
/// language to name (`NSString`), which is empty for a display that is off or gone. The name is the one that
/// the display tells of itself, else that of its output.
VX_EXPORT NSMutableDictionary* IODisplayCreateInfoDictionary(io_service_t display, std::uint32_t options);

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vx {

/// One display as the platform sees it now; bounds in pixels from the top left of the desktop, the rate in
/// refreshes per second.
struct DisplayInfo {
    std::uint32_t id = 0;
    /// Where the display is plugged in: no two have it in common.
    std::string output;
    /// What the display calls itself, else its output. Two of the same make have the same.
    std::string name;
    CGRect bounds;
    double refreshRate = 60.0;
};

/// Rates that a display link can keep.
inline constexpr double kSlowestRefresh = 1.0;
inline constexpr double kFastestRefresh = 1000.0;
/// False for NaN as well.
inline bool isRefreshRate(double rate) {
    return rate >= kSlowestRefresh && rate <= kFastestRefresh;
}

/// The id of the display at that output: the same one as long as the process runs, never 0. Any thread.
std::uint32_t displayIdOf(const std::string& output);

/// The display that shows most of `frame`, or null where none shows any of it.
const DisplayInfo* displayUnder(const std::vector<DisplayInfo>& displays, CGRect frame);

/// The display that shows most of `frame`; the first where none shows any of it, a nameless one of 60 Hz
/// where there is none.
DisplayInfo displayShowing(const std::vector<DisplayInfo>& displays, CGRect frame);

/// The first display of that name, else the one at the output of that name, or null.
const DisplayInfo* displayNamed(const std::vector<DisplayInfo>& displays, const std::string& name);

} // namespace vx

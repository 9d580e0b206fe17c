// SPDX-License-Identifier: MIT
#pragma once

namespace vx::bench {

/// How long each pacing row measures.
extern double pacingSeconds;

/// Draws in a window on the X server of DISPLAY for `seconds` and prints the 99th percentile of the deviation
/// in milliseconds, and how many refreshes were lost. Returns the exit status.
int printPacingOnX11(double seconds);

} // namespace vx::bench

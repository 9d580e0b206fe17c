// SPDX-License-Identifier: MIT
#pragma once

namespace vx::bench {

/// How long each pacing row measures.
extern double pacingSeconds;

/// On the X server of DISPLAY: draws in a window for `seconds`, then lets the link call back alone for as
/// long. Prints the 99th percentiles of the deviations in milliseconds of the link and of the bare events,
/// and how many refreshes were lost while drawing. Returns the exit status.
int printPacingOnX11(double seconds);

} // namespace vx::bench

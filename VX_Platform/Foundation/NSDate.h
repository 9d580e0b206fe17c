// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// The clock.
class VX_EXPORT NSDate {
public:
    /// Returns the seconds since the first instant of 1 January 2001 (UTC), in steps of a microsecond or
    /// less. They never run backwards: the zero point is taken once per process and the monotonic clock
    /// counts from there, so a correction of the system's clock does not disturb frame times. Any thread.
    static double timeIntervalSinceReferenceDate();
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// The clock.
class VX_EXPORT NSDate {
public:
    /// Seconds since the first instant of 1 January 2001 (UTC), in steps of at least a microsecond. It never
    /// runs backwards: the zero point is taken once per process and the steady clock counts from there, so a
    /// correction of the system's clock does not disturb frame times.
    static double timeIntervalSinceReferenceDate();
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// Point, size and rectangle of 64-bit floats. A size also carries offsets: width as x, height as y.
struct CGPoint {
    double x = 0.0;
    double y = 0.0;
};

struct CGSize {
    double width = 0.0;
    double height = 0.0;
};

struct CGRect {
    CGPoint origin;
    CGSize size;
};

using NSPoint = CGPoint;
using NSSize = CGSize;
using NSRect = CGRect;

inline CGPoint CGPointMake(double x, double y) {
    return {x, y};
}

inline CGSize CGSizeMake(double width, double height) {
    return {width, height};
}

inline CGRect CGRectMake(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
}

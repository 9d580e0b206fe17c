// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// A place, in pixels unless said otherwise, y counted downward from the top.
struct CGPoint {
    /// From the left, and from the top.
    double x = 0.0;
    double y = 0.0;
};

/// An extent, in pixels unless said otherwise. It also carries offsets: width as x, height as y.
struct CGSize {
    /// To the right, and downward.
    double width = 0.0;
    double height = 0.0;
};

/// A rectangle: its corner nearest to the origin of its coordinates, and its extent.
struct CGRect {
    /// The corner.
    CGPoint origin;
    /// The extent.
    CGSize size;
};

/// The same under the names of the windows' side.
using NSPoint = CGPoint;
using NSSize = CGSize;
using NSRect = CGRect;

/// Return the value with these fields. Any thread.
inline CGPoint CGPointMake(double x, double y) {
    return {x, y};
}

/// As above.
inline CGSize CGSizeMake(double width, double height) {
    return {width, height};
}

/// As above.
inline CGRect CGRectMake(double x, double y, double width, double height) {
    return {{x, y}, {width, height}};
}

/// Returns whether all four numbers are the same. Any thread.
inline bool CGRectEqualToRect(CGRect a, CGRect b) {
    return a.origin.x == b.origin.x && a.origin.y == b.origin.y && a.size.width == b.size.width &&
           a.size.height == b.size.height;
}

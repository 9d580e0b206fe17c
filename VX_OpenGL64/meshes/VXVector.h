// SPDX-License-Identifier: MIT
#pragma once

/// Two floats in a row, as client arrays take them.
struct VXVector2 {
    /// Coordinates, in whatever unit the operation that takes the vector names.
    float x;
    float y;
};

/// The same with a third coordinate.
struct VXVector3 {
    /// Coordinates, in whatever unit the operation that takes the vector names.
    float x;
    float y;
    float z;
};

// SPDX-License-Identifier: MIT
#pragma once

/// Plain records of two and three floats, as client arrays take them.
struct VXVector2 {
    float x;
    float y;
};

struct VXVector3 {
    float x;
    float y;
    float z;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/tags/VX_GLDynamicTexture.h>

/// A calibration picture of a composition's size: a grid of 40 pixels, stripes that become finer from 10
/// pixels to 1, eight colour bars, corner marks, a disc in the middle and the size in words. Grid and
/// stripes' widths are in pixels, all else goes by the size.
class VX_EXPORT VX_GLTestPattern : public VX_GLDynamicTexture {
public:
    /// As for `VX_GLDynamicTexture`.
    VX_GLTestPattern(int width, int height);
    ~VX_GLTestPattern() override;

    /// Paints the picture on the image locked on the calling thread, whose origin is at the top left. No
    /// context is needed. Raises NSInvalidArgumentException on a machine without any sans font.
    void Draw() override;
};

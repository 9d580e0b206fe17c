// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

class VX_GLTagTexture;

/// Lines of text over the lower left of the picture, on a dark panel. Everything needs the view's context.
class Caption {
public:
    Caption() = default;
    ~Caption();
    Caption(const Caption&) = delete;
    Caption& operator=(const Caption&) = delete;

    /// What is shown from now on; nothing without lines.
    void set(const std::vector<std::string>& lines);
    /// Over a picture of that size in pixels. GL state is as before afterwards.
    void draw(int width, int height);

private:
    VX_GLTagTexture* m_Text = nullptr;
};

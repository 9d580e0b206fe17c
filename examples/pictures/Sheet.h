// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <examples/pictures/Item.h>

class VX_GLTagTexture;

/// Draws items side by side, each on a checkerboard with its caption, in as many columns as show them
/// largest.
class Sheet : public VX_GLRenderpipeline {
public:
    explicit Sheet(Items items) : m_Items(std::move(items)) {}

    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

    /// Whether there was something to show when drawing began.
    bool hasShown() const { return m_HasShown; }

private:
    struct Shown {
        Item* item;
        VX_GLTagTexture* caption;
    };
    Items m_Items;
    std::vector<Shown> m_Shown;
    bool m_HasShown = false;
};

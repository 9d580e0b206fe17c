// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/host/VX_GLRenderpipeline.h>
#include <examples/output_screen/Chart.h>

#include <mutex>

/// Shows the chart pixel for pixel, and a line that goes across it in four seconds.
class ChartPipeline : public VX_GLRenderpipeline {
public:
    /// What the chart says from the next frame on. Any thread.
    void setCaption(ChartCaption caption);

    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    void makeChart(int width, int height);

    std::mutex m_CaptionLock;
    ChartCaption m_Caption;
    bool m_IsNewCaption = false;
    VX_GLTagTexture* m_Chart = nullptr;
};

// SPDX-License-Identifier: MIT
#include <examples/output_screen/ChartPipeline.h>

#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/host/VX_GLMainView.h>

#include <epoxy/gl.h>

#include <cmath>

void ChartPipeline::setCaption(ChartCaption caption) {
    const std::lock_guard guard(m_CaptionLock);
    m_Caption = std::move(caption);
    m_IsNewCaption = true;
}

// Comes with every move: the context ends, and with it the texture.
void ChartPipeline::doStopRender() {
    VX_GLTagTexture::Release(m_Chart);
    m_Chart = nullptr;
    VX_GLRenderpipeline::doStopRender();
}

void ChartPipeline::makeChart(int width, int height) {
    const std::lock_guard guard(m_CaptionLock);
    const bool fits =
        m_Chart && m_Chart->contentSize().width == width && m_Chart->contentSize().height == height;
    if (fits && !m_IsNewCaption)
        return;
    m_IsNewCaption = false;
    VX_GLTagTexture::Release(m_Chart);
    auto* const chart = new Chart(width, height, m_Caption);
    chart->UpdateRectangleTexture();
    m_Chart = chart;
}

void ChartPipeline::renderPipeline(CGRect* bounds) {
    const int width = static_cast<int>(bounds->size.width), height = static_cast<int>(bounds->size.height);
    if (width < 1 || height < 1)
        return;
    makeChart(width, height);
    glViewport(0, 0, width, height);
    VX_GLCamera camera;
    glMatrixMode(GL_PROJECTION);
    camera.SetProjectionOrtho(0.0, width, 0.0, height, -1.0, 1.0);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glColor3f(1.0f, 1.0f, 1.0f);
    m_Chart->RenderRH_W3({0.0f, 0.0f, 0.0f}, static_cast<float>(width));

    const double turn = m_TargetGLView->GetFrameTime() / 4.0;
    const int x = static_cast<int>((turn - std::floor(turn)) * width);
    glColor3f(1.0f, 0.55f, 0.1f);
    glRecti(x, 0, x + 2, height);
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

class FadePipeline : public VX_GLRenderpipeline {
    void doStartRender() override {
        m_Target.SetResolution(256, 256);
        m_Target.CreateFrameBuffer();
        m_Target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    }
    void doStopRender() override { m_Target.FreeTextures(); }
    void renderPipeline(CGRect*) override {
        const float time = float(m_TargetGLView->GetFrameTime());
        m_Target.Bind(0);
        glClearColor(0.0f, 1.0f - time, time, 0.5f);
        glClear(GL_COLOR_BUFFER_BIT);
        m_Target.Unbind();
        glClearColor(time, 0.4f, 0.2f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        if (time == 1.0f)
            VX_GLSaveRenderTarget("target.png", &m_Target, 0); // 256 x 256, with alpha
    }
    VX_GLRenderTarget m_Target;
};

int main() {
    if (!NSApplication::usePlatform("headless"))
        return 1;
    NSApplication::plugHeadlessDisplay("Wall", CGRectMake(1920, 0, 3840, 2160), 30.0);

    const auto pipeline = NSInit(new FadePipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.width = 320, .height = 180, .stepped = true});
    if (!host || !host->record(".", 0, 24, 25.0)) // frame_00000.png to frame_00024.png
        return 1;
    return host->view()->StepFrame(1.0, "still.png") ? 0 : 1;
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

class RecordedPipeline : public VX_GLRenderpipeline {
    void doStartRender() override {
        m_Recorder.OpenProgram("gzip -1 > show.raw.gz", 640, 360, VX_GLFrameRecorderBehind::drop);
    }
    void renderPipeline(CGRect*) override {
        const float time = float(m_TargetGLView->GetFrameTime());
        glClearColor(time - float(int(time)), 0.4f, 0.2f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        m_Recorder.TakeFrame(); // what has been drawn so far
    }
    void doStopRender() override { m_Recorder.Finish(); } // all that was taken is written
    VX_GLFrameRecorder m_Recorder;
};

int main() {
    const auto pipeline = NSInit(new RecordedPipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.title = "Recorded", .resizable = false});
    return host ? host->run() : 1;
}

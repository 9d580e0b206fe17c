// SPDX-License-Identifier: MIT
// Writes 100 numbered frames of a bouncing ball: four seconds that can be played in a loop.
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <cmath>
#include <cstdio>
#include <filesystem>

namespace {

class BallPipeline : public VX_GLRenderpipeline {
    void doStartRender() override {
        VX_GLGeometryUVSphere ball;
        ball.m_Divisions = 48;
        ball.m_BandSize = 4;
        ball.m_BandColor[0] = {0.95f, 0.35f, 0.2f, 1.0f};
        ball.m_BandColor[1] = {0.95f, 0.9f, 0.8f, 1.0f};
        ball.Generate(VX_GLVertexPDN);
        m_Ball.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &ball);
    }
    void doStopRender() override { m_Ball.ClearAll(); }
    void renderPipeline(CGRect* bounds) override {
        const float time = static_cast<float>(m_TargetGLView->GetFrameTime());
        glClearColor(0.12f, 0.3f, 0.42f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (GLenum ability : {GL_DEPTH_TEST, GL_LIGHTING, GL_LIGHT0, GL_COLOR_MATERIAL})
            glEnable(ability);
        m_Camera.m_Aspect = static_cast<float>(bounds->size.width / bounds->size.height);
        glMatrixMode(GL_PROJECTION);
        m_Camera.SetProjectionPerspective();
        glMatrixMode(GL_MODELVIEW);
        m_Camera.SetCameraView();
        m_Light.SetPosition(0, {0.5f, 1.0f, -0.8f});
        m_Light.SetDirecionalLight(0);
        glTranslatef(0.0f, 1.3f * std::abs(std::sin(time * 3.14159265f)) - 0.7f, 0.0f); // a bounce a second
        glRotatef(90.0f * time, 0.3f, 0.2f, 1.0f);                                      // a turn in four
        m_Ball.Draw(GL_TRIANGLE_STRIP, VX_GLVertexPDN, 0, 0);
    }
    VX_GLMeshDataRenderer m_Ball;
    VX_GLCamera m_Camera;
    VX_GLLight m_Light;
};

} // namespace

int main(int count, char** words) {
    VX_SetDiagnostics(true);
    if (count != 2 || words[1][0] == '-')
        return std::fprintf(stderr, "usage: %s FOLDER\nwrites frame_00000.png to frame_00099.png there\n",
                            words[0]),
               2;
    std::error_code failure; // a folder that cannot be had shows at the first frame
    std::filesystem::create_directories(words[1], failure);
    const auto pipeline = NSInit(new BallPipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.headless = true, .stepped = true});
    return host && host->record(words[1], 0, 99, 25.0) ? 0 : 1;
}

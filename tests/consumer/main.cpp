// SPDX-License-Identifier: MIT
// Draws a box that fills the view, without a display, and looks at the pixel in the middle.
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <cstdio>
#include <memory>

class BoxPipeline : public VX_GLRenderpipeline {
public:
    void doStartRender() override {
        VX_GLGeometryCube::Color = glm::vec4(0.2f, 0.4f, 1.0f, 1.0f);
        VX_GLGeometryCube box;
        box.m_HalfSize = glm::vec3(0.9f);
        box.Generate(VX_GLVertexPD);
        m_Box = std::make_unique<VX_GLMeshDataRenderer>();
        m_Box->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    }
    void doStopRender() override {
        m_Box.reset();
        VX_GLRenderpipeline::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override {
        glClearColor(0, 0, 0, 0);
        glClear(GL_COLOR_BUFFER_BIT);
        m_Box->Draw(GL_QUADS, VX_GLVertexPD, 0, 0);
        glReadPixels(int(bounds->size.width) / 2, int(bounds->size.height) / 2, 1, 1, GL_RGBA,
                     GL_UNSIGNED_BYTE, pixel);
        NSApplication::sharedApplication()->stop();
    }
    unsigned char pixel[4] = {};

private:
    std::unique_ptr<VX_GLMeshDataRenderer> m_Box;
};

int main() {
    auto pipeline = NSInit(new BoxPipeline);
    auto host = VX_GLHost::open(pipeline.get(), {.width = 64, .height = 64, .headless = true});
    if (!host)
        return 1;
    host->run();
    host.reset();

    const unsigned char* pixel = pipeline->pixel;
    std::printf("pixel in the middle: %d %d %d\n", pixel[0], pixel[1], pixel[2]);
    return pixel[0] == 51 && pixel[1] == 102 && pixel[2] == 255 ? 0 : 1;
}

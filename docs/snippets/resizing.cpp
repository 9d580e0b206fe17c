// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <memory>

class ResizingPipeline : public VX_GLRenderpipeline {
    void doStartRender() override { m_Target = std::make_unique<VX_GLRenderTarget>(); }
    void doStopRender() override { m_Target.reset(); }

    void renderPipeline(CGRect* bounds) override {
        const int width = int(bounds->size.width), height = int(bounds->size.height);
        if (m_Target->SetResolution(width, height)) { // another size: what depends on it is made anew
            m_Target->CreateFrameBuffer();
            m_Target->AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
        }
        m_Target->Bind(0); // sets the viewport to the target's size
        glClearColor(0.15f, 0.5f, 0.4f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        m_Target->Unbind();
        m_Target->SetDefaultProjection();
        m_Target->DrawFullScreen(0);
    }
    std::unique_ptr<VX_GLRenderTarget> m_Target;
};

int main() {
    const auto pipeline = NSInit(new ResizingPipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.title = "Resize me"});
    return host ? host->run() : 1;
}

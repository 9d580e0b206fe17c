// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <memory>

class BoxPipeline : public VX_GLRenderpipeline {
public:
    void doStartRender() override { // the context is new and current
        VX_GLGeometryCube box;
        box.m_HalfSize = glm::vec3(0.8f);
        box.Generate(VX_GLVertexPN);
        m_Box = std::make_unique<VX_GLMeshDataRenderer>();
        m_Box->UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    }
    void doStopRender() override { // it is still current
        m_Box.reset();
        VX_GLRenderpipeline::doStopRender();
    }
    void renderPipeline(CGRect* bounds) override { // one frame, on the display link's thread
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (GLenum ability : {GL_DEPTH_TEST, GL_LIGHTING, GL_LIGHT0})
            glEnable(ability);
        m_Camera.m_Aspect = float(bounds->size.width / bounds->size.height);
        glMatrixMode(GL_PROJECTION);
        m_Camera.SetProjectionPerspective();
        glMatrixMode(GL_MODELVIEW);
        m_Camera.SetCameraView();
        glRotatef(float(++m_Frame), 0.4f, 1.0f, 0.2f);
        m_Box->Draw(GL_QUADS, VX_GLVertexPN, 0, 0);
    }

private:
    std::unique_ptr<VX_GLMeshDataRenderer> m_Box;
    VX_GLCamera m_Camera;
    int m_Frame = 0;
};

int main() {
    const CGRect frame = CGRectMake(100, 100, 640, 360);
    auto window = NSRef<NSWindow>::adopt((new NSWindow)->initWithContentRect(frame, NSTitledWindowMask));
    if (!window) // no display: the log has said so
        return 1;
    auto view = NSRef<VX_GLMainView>::adopt((new VX_GLMainView)->initWithFrame(frame, nullptr));
    auto pipeline = NSRef<BoxPipeline>::adopt(new BoxPipeline);
    pipeline->init();
    window->setTitle("A turning box");
    window->setContentView(view.get());
    window->makeKeyAndOrderFront();
    view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
    view->AddPixelFormatAttribute(NSOpenGLPFADepthSize, 24);
    if (!view->initializationWithPixelFormat(pipeline.get(), view->GetPixelFormatAttributes()))
        return 1;
    NSApplication::sharedApplication()->run(); // until the window is closed
    view->stopRender();
    view->releaseResources();
}

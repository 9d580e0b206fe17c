// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <algorithm>

class BoxPipeline : public VX_GLRenderpipeline {
    void doStartRender() override { // the context is new and current
        VX_GLGeometryCube box;
        box.m_HalfSize = glm::vec3(0.7f);
        box.Generate(VX_GLVertexPDN);
        for (int i = 0; i < 24; ++i) // each corner has the colour of its place
            VX_GLVertex::SetDiffuse(VX_GLVertexPDN, box.m_Vertex->Seek(i),
                                    glm::vec4(0.6f + 0.5f * *box.m_Vertex->GetPosition(i), 1.0f));
        m_Box.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
    }
    void doStopRender() override { m_Box.ClearAll(); } // it is still current
    void renderPipeline(CGRect* bounds) override {     // one frame, on a thread of its own
        glViewport(0, 0, int(bounds->size.width), int(bounds->size.height));
        glClearColor(0.08f, 0.1f, 0.16f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (GLenum ability : {GL_DEPTH_TEST, GL_LIGHTING, GL_LIGHT0, GL_COLOR_MATERIAL})
            glEnable(ability);
        m_Camera.m_Aspect = float(bounds->size.width / bounds->size.height);
        m_Camera.m_EyeAt.z = -5.0f / std::min(m_Camera.m_Aspect, 1.0f); // a narrow picture from further away
        m_Camera.m_ZFar = 5.0f - m_Camera.m_EyeAt.z;
        glMatrixMode(GL_PROJECTION);
        m_Camera.SetProjectionPerspective();
        glMatrixMode(GL_MODELVIEW);
        m_Camera.SetCameraView();
        m_Light.SetPosition(0, glm::vec3(0.3f, 1.0f, -1.4f));
        m_Light.SetDirecionalLight(0);
        glRotatef(-25.0f, 1.0f, 0.0f, 0.0f);
        glRotatef(30.0f + float(m_TargetGLView->GetFrameTime()) * 40.0f, 0.0f, 1.0f, 0.0f);
        m_Box.Draw(GL_QUADS, VX_GLVertexPDN, 0, 0);
    }
    VX_GLMeshDataRenderer m_Box;
    VX_GLCamera m_Camera;
    VX_GLLight m_Light;
};

int main() {
    const auto pipeline = NSInit(new BoxPipeline);
    const auto host = VX_GLHost::open(pipeline.get(), {.title = "A turning box"});
    return host ? host->run() : 1; // until the window is closed; without a display the log has said so
}

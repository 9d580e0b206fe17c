// SPDX-License-Identifier: MIT
#include <examples/hosts/support/HostScene.h>

#include <epoxy/gl.h>

#include <algorithm>

void HostScene::doStartRender() {
    m_Time = 0.0;
    VX_GLGeometryCube box;
    box.m_HalfSize = glm::vec3(0.75f);
    box.Generate(VX_GLVertexPDN);
    for (int i = 0; i < 24; ++i) // each corner has the colour of its place
        VX_GLVertex::SetDiffuse(VX_GLVertexPDN, box.m_Vertex->Seek(i),
                                glm::vec4(0.6f + 0.5f * *box.m_Vertex->GetPosition(i), 1.0f));
    m_Box.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &box);
}

void HostScene::doStopRender() {
    m_Box.ClearAll();
}

void HostScene::renderPipeline(CGRect* bounds) {
    const double time = m_TargetGLView->GetFrameTime();
    m_Angle += (time - m_Time) * m_Speed;
    m_Time = time;
    const unsigned color = ground();
    glViewport(0, 0, int(bounds->size.width), int(bounds->size.height));
    glClearColor(float(color >> 16) / 255.0f, float(color >> 8 & 255) / 255.0f, float(color & 255) / 255.0f,
                 1.0f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    for (const GLenum ability : {GL_DEPTH_TEST, GL_LIGHTING, GL_LIGHT0, GL_COLOR_MATERIAL})
        glEnable(ability);
    setCamera(float(bounds->size.width / bounds->size.height));
    glRotatef(-25.0f, 1.0f, 0.0f, 0.0f);
    glRotatef(float(m_Angle), 0.0f, 1.0f, 0.0f);
    m_Box.Draw(GL_QUADS, VX_GLVertexPDN, 0, 0);
}

void HostScene::setCamera(float aspect) {
    m_Camera.m_Aspect = aspect;
    m_Camera.m_EyeAt.z = -5.8f / std::min(aspect, 1.0f); // a narrow picture from further away
    m_Camera.m_ZFar = 5.0f - m_Camera.m_EyeAt.z;
    glMatrixMode(GL_PROJECTION);
    m_Camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    m_Camera.SetCameraView();
    m_Light.SetPosition(0, glm::vec3(0.3f, 1.0f, -1.4f));
    m_Light.SetDirecionalLight(0);
}

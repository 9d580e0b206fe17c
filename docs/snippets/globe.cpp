// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/VX_OpenGL64.h>

#include <epoxy/gl.h>

#include <vector>

class GlobePipeline : public VX_GLRenderpipeline {
public:
    const char* m_Picture = nullptr; // a picture file
    const char* m_File = nullptr;    // an X file

private:
    void doStartRender() override {
        if (!m_Picture || !m_Texture.loadMipmapTextureFromPath(m_Picture, false))
            makeStripes();
        VX_GLMeshXLoader file;
        if (m_File && file.Load(m_File)) {
            file.Triangulate();
            file.calcRaiusCenter(0);
            file.shiftToCenterScale(1.0f, 0); // around the origin; the farthest corner is 1 away
            m_Mesh.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, file.m_Meshes[0]);
        } else {
            VX_GLGeometryUVSphere sphere;
            sphere.m_Radius = 1.0f;
            sphere.m_Divisions = 64;
            sphere.Generate(VX_GLVertexPNT);
            m_Mesh.UpdateByMeshData(GL_STATIC_DRAW, GL_STATIC_DRAW, &sphere);
        }
    }
    void makeStripes() {
        std::vector<unsigned char> pixels(64 * 32 * 3, 70);
        for (int i = 0; i < 64 * 32; ++i) // red, green and blue of every other field
            if ((i / 4 + i / (4 * 64)) % 2)
                pixels[3 * i] = 250, pixels[3 * i + 1] = 220, pixels[3 * i + 2] = 150;
        m_Texture.loadTextureFromData(GL_TEXTURE_2D, GL_RGB, GL_RGB, GL_UNSIGNED_BYTE, 64, 32, pixels.data());
    }
    void doStopRender() override {
        m_Mesh.ClearAll();
        m_Texture.discardData();
        VX_GLRenderpipeline::doStopRender();
    }

    void renderPipeline(CGRect* bounds) override {
        glViewport(0, 0, int(bounds->size.width), int(bounds->size.height));
        glClearColor(0.1f, 0.12f, 0.18f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (GLenum ability : {GL_DEPTH_TEST, GL_LIGHTING, GL_LIGHT0, GL_NORMALIZE})
            glEnable(ability);
        m_Camera.m_Aspect = float(bounds->size.width / bounds->size.height);
        glMatrixMode(GL_PROJECTION);
        m_Camera.SetProjectionPerspective();
        glMatrixMode(GL_MODELVIEW);
        m_Camera.SetCameraView();
        m_Light.SetPosition(0, glm::vec3(0.6f, 0.8f, -1.0f));
        m_Light.SetDirecionalLight(0);
        glRotatef(20.0f * float(m_TargetGLView->GetFrameTime()), 0.0f, 1.0f, 0.0f);
        m_Texture.enableTexture(true);
        glMatrixMode(GL_TEXTURE); // this class has the bottom row at 0, meshes the top one
        glLoadIdentity();
        glScalef(1.0f, -1.0f, 1.0f);
        if (m_Mesh.m_IndexBuffer) // a file has indices
            m_Mesh.DrawWithIndex(GL_TRIANGLES, VX_GLVertexPNT);
        else
            m_Mesh.Draw(GL_TRIANGLE_STRIP, VX_GLVertexPNT, 0, 0);
        m_Texture.enableTexture(false);
        glLoadIdentity();
    }
    VX_GLMeshDataRenderer m_Mesh;
    VX_GLTexture m_Texture;
    VX_GLCamera m_Camera;
    VX_GLLight m_Light;
};

int main(int count, char** arguments) {
    const auto pipeline = NSInit(new GlobePipeline);
    pipeline->m_Picture = count > 1 ? arguments[1] : nullptr;
    pipeline->m_File = count > 2 ? arguments[2] : nullptr;
    const auto host = VX_GLHost::open(pipeline.get(), {.title = "Globe"});
    return host ? host->run() : 1;
}

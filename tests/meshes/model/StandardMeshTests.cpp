// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMesh.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <tests/support/GLTest.h>

using Lines = GLRecorder::Lines;

namespace {

/// Notes its end among the GL calls, to see what ends when.
struct NotingFace : VX_GLStandardFaceData {
    explicit NotingFace(GLRecorder& recorder) : m_Recorder(recorder) {}
    ~NotingFace() override { m_Recorder.note("face"); }
    GLRecorder& m_Recorder;
};

} // namespace

TEST(VX_GLStandardMesh, FreesItsRootThenMaterialsThenMeshesAndOnlyTexturesThatAre) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    unsigned textures[4];
    glGenTextures(4, textures);
    for (const unsigned texture : textures)
        glBindTexture(GL_TEXTURE_2D, texture);
    {
        VX_GLStandardMesh model;
        recorder.onCall = [&] { EXPECT_EQ(model.m_RootMeshs, nullptr); };
        const auto fill = [&](std::initializer_list<unsigned> names) {
            VX_GLStandardMaterial* material = model.AddMaterial();
            std::copy(names.begin(), names.end(), material->m_Textures);
            model.GetRootMeshs()->AddChildren()->AddMeshIndex(0);
        };
        fill({});
        fill({0, textures[0], 0, 0, 0, 0, 0, textures[1]});
        fill({textures[2]});
        model.AddMesh()->m_Faces.push_back(new NotingFace(recorder));
        EXPECT_EQ(model.GetMaterialCount(), 3);
        EXPECT_EQ(model.GetMeshCount(), 1);
        model.FreeResources();
        EXPECT_EQ(recorder.count("glDeleteTextures"), 3);
        EXPECT_EQ(recorder.take().back(), "face");
        EXPECT_FALSE(glIsTexture(textures[0]) || glIsTexture(textures[1]) || glIsTexture(textures[2]));
        EXPECT_EQ(model.GetMaterialCount() + model.GetMeshCount(), 0);
        fill({textures[3]});
        model.AddMesh()->m_Faces.push_back(new NotingFace(recorder));
    }
    EXPECT_FALSE(glIsTexture(textures[3])) << "and the destructor too";
    EXPECT_EQ(recorder.take().back(), "face");
}

TEST(VX_GLStandardMesh, NodesKeepTheirTransformWhenTheyAreEmptied) {
    VX_GLStandardMesh model;
    VX_GLStandardMeshs* root = model.GetRootMeshs();
    EXPECT_EQ(model.GetRootMeshs(), root);
    root->AddChildren()->AddChildren();
    EXPECT_EQ(root->m_Children[0]->m_Transform, glm::mat4(1.0f));
    root->m_Transform[3][0] = 5;
    root->AddMeshIndex(7);
    root->AddMeshIndex(-1);
    EXPECT_EQ(root->m_MeshIndex, (std::vector<int>{7, -1}));
    root->FreeResources();
    EXPECT_TRUE(root->m_MeshIndex.empty() && root->m_Children.empty());
    EXPECT_EQ(root->m_Transform[3][0], 5.0f);
    VX_GLStandardMeshData* mesh = model.AddMesh();
    EXPECT_EQ(mesh->m_MeshTag, -1);
    EXPECT_EQ(mesh->AddFace()->m_FaceTag, 9);
    mesh->AddFace();
    EXPECT_EQ(mesh->GetFaceCount(), 2);
    mesh->FreeResources();
    EXPECT_EQ(mesh->GetFaceCount(), 0);
}

TEST(VX_GLStandardMaterial, KeepsACopyOfItsNameAndCallsNoGLWithoutTextures) {
    auto* pool = (new NSAutoreleasePool)->init();
    {
        VX_GLStandardMaterial material;
        EXPECT_EQ(material.GetName()->length(), 0);
        NSString* name = NSString::stringWithUTF8String("brass");
        material.SetName(name);
        NSString* kept = material.GetName();
        EXPECT_NE(kept, name);
        EXPECT_TRUE(kept->isEqualToString(name));
        material.SetName(kept);
        EXPECT_EQ(material.GetName(), kept);
        EXPECT_EQ(kept->retainCount(), 1);
        material.SetName(nullptr);
        EXPECT_EQ(material.GetName(), nullptr);
    }
    pool->release();
}

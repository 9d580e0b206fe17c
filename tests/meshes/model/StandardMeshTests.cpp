// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMesh.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/GLTest.h>

namespace {

/// Notes its end among the GL calls, to see what ends when.
struct NotingFace : VX_GLStandardFaceData {
    explicit NotingFace(GLRecorder& recorder) : m_Recorder(recorder) {}
    ~NotingFace() override { m_Recorder.note("face"); }
    GLRecorder& m_Recorder;
};

} // namespace

TEST(VX_GLStandardMesh, FreesItsRootThenTheTexturesThatAreThenItsMeshes) {
    HeadlessContext gl(8, 8);
    unsigned textures[3];
    glGenTextures(3, textures);
    GLRecorder recorder;
    {
        VX_GLStandardMesh model;
        recorder.onCall = [&] { EXPECT_EQ(model.m_RootMeshs, nullptr); };
        const auto add = [&](int first, unsigned name) {
            model.AddMaterial()->m_Textures[first] = name;
            model.AddMesh()->m_Faces.push_back(new NotingFace(recorder));
            model.GetRootMeshs()->AddChildren()->AddMeshIndex(0);
        };
        add(1, textures[0]);
        add(7, textures[1]);
        EXPECT_EQ(ints(model.GetMaterialCount(), model.GetMeshCount()), ints(2, 2));
        model.FreeResources();
        EXPECT_EQ(recorder.count("glDeleteTextures"), 2) << "a call for each texture";
        EXPECT_EQ(recorder.take().back(), "face");
        EXPECT_EQ(model.m_RootMeshs, nullptr);
        EXPECT_EQ(ints(model.GetMaterialCount(), model.GetMeshCount()), ints(0, 0));
        add(0, textures[2]);
    }
    EXPECT_EQ(recorder.count("glDeleteTextures"), 1) << "at the end too";
}

TEST(VX_GLStandardMesh, NodesKeepTheirTransformWhenTheyAreEmptied) {
    VX_GLStandardMesh model;
    VX_GLStandardMeshs* root = model.GetRootMeshs();
    EXPECT_EQ(model.GetRootMeshs(), root);
    root->AddChildren()->AddChildren();
    root->m_Transform[3][0] = 5;
    root->AddMeshIndex(7);
    root->AddMeshIndex(-1);
    EXPECT_EQ(root->m_MeshIndex, (std::vector<int>{7, -1}));
    root->FreeResources();
    EXPECT_TRUE(root->m_MeshIndex.empty() && root->m_Children.empty());
    EXPECT_EQ(root->m_Transform[3][0], 5.0f);
}

TEST(VX_GLStandardMaterial, KeepsACopyOfItsName) {
    NSString* name = NSString::stringWithUTF8String("brass");
    VX_GLStandardMaterial material;
    material.SetName(name);
    NSString* kept = material.GetName();
    EXPECT_NE(kept, name);
    material.SetName(kept);
    EXPECT_EQ(material.GetName(), kept);
    EXPECT_EQ(kept->string(), "brass");
    material.SetName(nullptr);
    EXPECT_EQ(material.GetName(), nullptr);
}

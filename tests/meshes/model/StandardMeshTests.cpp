// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMesh.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/GLTest.h>

#include <algorithm>

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
    {
        VX_GLStandardMesh model;
        recorder.onCall = [&] { EXPECT_EQ(model.m_RootMeshs, nullptr); };
        const auto fill = [&](std::initializer_list<unsigned> names) {
            std::copy(names.begin(), names.end(), model.AddMaterial()->m_Textures);
            model.GetRootMeshs()->AddChildren()->AddMeshIndex(0);
        };
        fill({0, textures[0], 0, 0, 0, 0, 0, textures[1]});
        fill({textures[2]});
        model.AddMesh()->m_Faces.push_back(new NotingFace(recorder));
        EXPECT_EQ(ints(model.GetMaterialCount(), model.GetMeshCount()), ints(2, 1));
        model.FreeResources();
        EXPECT_EQ(recorder.count("glDeleteTextures"), 3);
        EXPECT_EQ(recorder.take().back(), "face");
        EXPECT_EQ(ints(model.GetMaterialCount(), model.GetMeshCount()), ints(0, 0));
        fill({textures[3]});
        model.AddMesh()->m_Faces.push_back(new NotingFace(recorder));
    }
    EXPECT_EQ(recorder.take(), (GLRecorder::Lines{call("glDeleteTextures", 1, &textures), "face"}))
        << "at the end too";
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
    auto name = NSRef<NSString>::adopt(NSString::stringWithUTF8String("brass")->copy());
    VX_GLStandardMaterial material;
    material.SetName(name.get());
    name = nullptr;
    NSString* kept = material.GetName();
    material.SetName(kept);
    EXPECT_EQ(material.GetName(), kept);
    EXPECT_EQ(kept->string(), "brass");
    material.SetName(nullptr);
    EXPECT_EQ(material.GetName(), nullptr);
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMesh.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <tests/meshes/ClientArrayRecorder.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

using vx::test::ClientArrayRecorder;

namespace {

/// Notes its end among the GL calls, to see what ends when.
class NotingFace : public VX_GLStandardFaceData {
public:
    explicit NotingFace(ClientArrayRecorder& recorder) : m_Recorder(recorder) {}
    ~NotingFace() override { m_Recorder.calls.push_back("face"); }

private:
    ClientArrayRecorder& m_Recorder;
};

} // namespace

TEST(StandardMesh, FreesMaterialsBeforeMeshesAndDeletesOnlyTexturesThatAre) {
    ClientArrayRecorder recorder;
    {
        VX_GLStandardMesh model;
        for (unsigned first : {0u, 10u, 20u}) {
            VX_GLStandardMaterial* material = model.AddMaterial();
            material->m_Textures[1] = first;
            material->m_Textures[7] = first ? first + 1 : 0;
        }
        model.AddMesh()->m_Faces.push_back(new NotingFace(recorder));
        model.GetRootMeshs()->AddChildren()->AddMeshIndex(0);
        EXPECT_EQ(model.GetMaterialCount(), 3);
        EXPECT_EQ(model.GetMeshCount(), 1);
        model.FreeResources();
        EXPECT_EQ(recorder.calls, (std::vector<std::string>{"delete(1 a)", "delete(1 b)", "delete(1 14)",
                                                            "delete(1 15)", "face"}));
        EXPECT_EQ(model.GetMaterialCount() + model.GetMeshCount(), 0);
        EXPECT_EQ(model.m_RootMeshs, nullptr);

        recorder.calls.clear();
        model.AddMaterial()->m_Textures[0] = 1;
        model.AddMesh()->m_Faces.push_back(new NotingFace(recorder));
        model.GetRootMeshs();
    }
    EXPECT_EQ(recorder.calls, (std::vector<std::string>{"delete(1 1)", "face"})) << "and the destructor too";
}

TEST(StandardMesh, EndsItsRootBeforeItsMaterials) {
    ClientArrayRecorder recorder; // brings the entry point back
    static VX_GLStandardMesh* model;
    static bool rootWasGone;
    model = new VX_GLStandardMesh;
    model->AddMaterial()->m_Textures[0] = 5;
    model->GetRootMeshs()->AddChildren();
    epoxy_glDeleteTextures = [](GLsizei, const GLuint*) { rootWasGone = model->m_RootMeshs == nullptr; };
    model->FreeResources();
    EXPECT_TRUE(rootWasGone);
    delete model;
}

TEST(StandardMesh, NodesKeepTheirTransformWhenTheyAreEmptied) {
    VX_GLStandardMesh model;
    VX_GLStandardMeshs* root = model.GetRootMeshs();
    EXPECT_EQ(model.GetRootMeshs(), root);
    VX_GLStandardMeshs* child = root->AddChildren();
    child->AddChildren()->AddChildren();
    EXPECT_EQ(child->m_Transform, glm::tmat4x4<float>(1.0f));
    root->m_Transform[3][0] = 5;
    root->AddMeshIndex(7);
    root->AddMeshIndex(-1);
    EXPECT_EQ(root->m_MeshIndex, (std::vector<int>{7, -1}));
    root->FreeResources();
    EXPECT_TRUE(root->m_MeshIndex.empty());
    EXPECT_TRUE(root->m_Children.empty());
    EXPECT_EQ(root->m_Transform[3][0], 5.0f);
}

TEST(StandardMesh, MeshesAndFacesStartWithTheirTags) {
    VX_GLStandardMeshData mesh;
    EXPECT_EQ(mesh.m_MeshTag, -1);
    EXPECT_EQ(mesh.AddFace()->m_FaceTag, 9);
    EXPECT_NE(mesh.AddFace()->AllocateVertex(7, 3), nullptr);
    EXPECT_EQ(mesh.GetFaceCount(), 2);
    mesh.FreeResources();
    EXPECT_EQ(mesh.GetFaceCount(), 0);
}

TEST(StandardMesh, AMaterialKeepsACopyOfItsName) {
    auto* pool = (new NSAutoreleasePool)->init();
    ClientArrayRecorder recorder;
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
        for (float value : material.m_MaterialValues)
            EXPECT_EQ(value, 0.0f);
    }
    EXPECT_TRUE(recorder.calls.empty()) << "no texture, no GL";
    pool->release();
}

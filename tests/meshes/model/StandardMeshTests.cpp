// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMesh.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/GLTest.h>

namespace {

struct Face : VX_GLStandardFaceData {
    ~Face() override { ++ended; }
    static inline int ended = 0;
};

} // namespace

TEST(VX_GLStandardMesh, FreesItsRootItsTexturesAndItsMeshes) {
    HeadlessContext gl(8, 8);
    unsigned textures[2];
    glGenTextures(2, textures);
    VX_GLStandardMesh model;
    for (const int i : {0, 1}) {
        glBindTexture(GL_TEXTURE_2D, textures[i]); // which makes it one
        model.AddMaterial()->m_Textures[i * 7] = textures[i];
        model.AddMesh()->m_Faces.push_back(new Face);
        model.GetRootMeshs()->AddChildren()->AddMeshIndex(0);
    }
    EXPECT_EQ(ints(model.GetMaterialCount(), model.GetMeshCount()), ints(2, 2));
    VX_GLStandardMeshs* root = model.GetRootMeshs();
    root->m_Transform[3][0] = 5;
    root->AddMeshIndex(-1);
    root->FreeResources();
    EXPECT_TRUE(root->m_MeshIndex.empty() && root->m_Children.empty() && root->m_Transform[3][0] == 5);
    model.FreeResources();
    EXPECT_EQ(model.m_RootMeshs, nullptr);
    EXPECT_EQ(ints(model.GetMaterialCount(), model.GetMeshCount(), Face::ended), ints(0, 0, 2));
    EXPECT_FALSE(glIsTexture(textures[0]) || glIsTexture(textures[1]));
}

TEST(VX_GLStandardMaterial, KeepsACopyOfItsName) {
    NSString* name = NSString::stringWithUTF8String("brass");
    VX_GLStandardMaterial material;
    material.SetName(name);
    NSString* kept = material.GetName();
    material.SetName(kept);
    EXPECT_TRUE(kept != name && material.GetName() == kept && kept->string() == "brass");
    material.SetName(nullptr);
    EXPECT_EQ(material.GetName(), nullptr);
}

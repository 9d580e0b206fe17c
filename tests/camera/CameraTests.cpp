// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/camera/VX_GLCameraLight.h>
#include <VX_OpenGL64/camera/VX_GLLight.h>
#include <tests/support/GLTest.h>

#include <glm/gtc/matrix_transform.hpp>

#include <cmath>

using Matrix = glm::mat4;
using Vector = glm::vec3;
using Values = std::vector<float>;

namespace {

void expectNear(const Matrix& actual, const Matrix& expected) {
    for (int i = 0; i < 16; ++i)
        EXPECT_NEAR(actual[i / 4][i % 4], expected[i / 4][i % 4], 1e-4) << i;
}

void expectMatrix(GLenum name, const Matrix& expected) {
    Matrix matrix;
    glGetFloatv(name, &matrix[0][0]);
    expectNear(matrix, expected);
}

/// Diffuse, specular, ambient, position, and the three factors of attenuation, as GL has them.
Values lightOf(int number) {
    Values values;
    for (const GLenum name : {GL_DIFFUSE, GL_SPECULAR, GL_AMBIENT, GL_POSITION, GL_CONSTANT_ATTENUATION,
                              GL_LINEAR_ATTENUATION, GL_QUADRATIC_ATTENUATION}) {
        float value[4] = {};
        glGetLightfv(GL_LIGHT0 + GLenum(number), name, value);
        values.insert(values.end(), value, value + (name <= GL_POSITION ? 4 : 1));
    }
    return values;
}

} // namespace

TEST(VX_GLCamera, ProjectsInDegreesAndLooksFromItsEye) {
    HeadlessContext gl(8, 8);
    VX_GLCamera camera;
    glMatrixMode(GL_PROJECTION);
    glScalef(2, 2, 2);
    camera.SetProjectionPerspective();
    expectMatrix(GL_PROJECTION_MATRIX, glm::perspectiveRH(glm::radians(30.0f), 4.0f / 3.0f, 0.1f, 30.0f));
    camera.SetProjectionOrtho(-2, 4, -1, 3, 1, 9);
    expectMatrix(GL_PROJECTION_MATRIX, glm::ortho(-2.0f, 4.0f, -1.0f, 3.0f, 1.0f, 9.0f));
    glMatrixMode(GL_MODELVIEW);
    glScalef(2, 2, 2);
    camera.m_EyeAt = {1, 2, 3};
    camera.m_LookAt = {4, 6, 9};
    camera.m_Up = {1, 1, 0};
    const Matrix view = glm::lookAtRH(camera.m_EyeAt, camera.m_LookAt, camera.m_Up);
    camera.SetCameraView();
    expectMatrix(GL_MODELVIEW_MATRIX, view);
    camera.SetCameraViewOnly();
    expectMatrix(GL_MODELVIEW_MATRIX, view * view);
}

TEST(VX_GLCamera, FindsTheWorldBehindAPointOfTheWindow) {
    HeadlessContext gl(400, 300);
    VX_GLCamera camera;
    camera.m_ZNear = 1.0f;
    glMatrixMode(GL_PROJECTION);
    camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    camera.SetCameraView();
    // The eye is at -5 and looks along +Z, so +X of the world is on the left of the window.
    const float up = std::tan(glm::radians(15.0f));
    const std::pair<Vector, Vector> cases[] = {{{200, 150, 1}, {0, 0, -4}},
                                               {{200, 150, 30}, {0, 0, 25}},
                                               {{200, 300, 10}, {0, -10 * up, 5}},
                                               {{0, 0, 6}, {6 * up * 4 / 3, 6 * up, 1}}};
    for (const auto& [at, world] : cases) {
        Vector got(0.0f);
        camera.CalcWorldCoord(at.x, at.y, at.z, &got);
        EXPECT_LT(glm::distance(got, world), 2e-2f) << at.x << ' ' << at.y << ' ' << at.z;
    }
}

TEST(VX_GLCameraLight, TakesItsAngleInRadiansAndKeepsItsMatrices) {
    auto camera = NSRef<VX_GLCameraLight>::adopt((new VX_GLCameraLight)->init());
    expectNear(*camera->ProjectionMatrixPerspective(), glm::perspectiveRH(30.0f, 4.0f / 3.0f, 0.1f, 30.0f));
    expectNear(*camera->CameraMatrixLookAt(),
               glm::lookAtRH(Vector(0, 0, -5), Vector(0, 0, 0), Vector(0, 1, 0)));
}

TEST(Lights, SendTheirMaterialButNotTheirPosition) {
    HeadlessContext gl(8, 8);
    const Values untouched{1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 0};
    const Values sent{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 0, 0, 1, 0, .5f, .25f, .125f};
    auto camera = NSRef<VX_GLCameraLight>::adopt((new VX_GLCameraLight)->init());
    VX_GLLight light;
    camera->ApplyLightMaterial(3);
    light.ApplyLightMaterial(7);
    light.SetAttenuation(7, .5f, .25f, .125f);
    light.SetPosition(7, Vector(1, 2, 3));
    EXPECT_EQ(lightOf(3), untouched) << "it starts with the values that light 0 has in GL";
    EXPECT_EQ(lightOf(7), untouched);
    camera->m_Diffuse = light.m_Diffuse[7] = {1, 2, 3, 4};
    camera->m_Specular = light.m_Specular[7] = {5, 6, 7, 8};
    camera->m_Ambient = light.m_Ambient[7] = {9, 10, 11, 12};
    camera->m_ConstantAttenuation = .5f;
    camera->m_LinearAttenuation = .25f;
    camera->m_QuadraticAttenuation = .125f;
    camera->ApplyLightMaterial(3);
    light.ApplyLightMaterial(7);
    EXPECT_EQ(lightOf(3), sent);
    EXPECT_EQ(lightOf(7), sent);
    light.m_Position[7].w = 1.0f;
    light.SetPosition(7, Vector(4, 5, 6));
    EXPECT_EQ(light.m_Position[7], glm::vec4(4, 5, 6, 1)) << "only a direct write makes a light positional";
    light.SetDirecionalLight(7);
    EXPECT_EQ(light.m_Position[7].w, 0);
    EXPECT_EQ(lightOf(7)[13], 5);
    for (const int outside : {-1, 8}) {
        light.SetPosition(outside, Vector(9, 9, 9));
        light.SetAttenuation(outside, 9, 9, 9);
        light.SetDirecionalLight(outside);
        light.ApplyLightMaterial(outside);
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

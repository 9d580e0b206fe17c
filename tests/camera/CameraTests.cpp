// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/camera/VX_GLCameraLight.h>
#include <VX_OpenGL64/camera/VX_GLLight.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>
#include <glm/gtc/matrix_transform.hpp>

#include <bit>
#include <cmath>

using namespace vx::test;
using Lines = GLRecorder::Lines;
using Matrix = glm::tmat4x4<float>;
using Vector = glm::tvec3<float>;

namespace {

Matrix currentMatrix(GLenum name) {
    Matrix matrix;
    glGetFloatv(name, &matrix[0][0]);
    return matrix;
}

void expectNear(const Matrix& actual, const Matrix& expected) {
    for (int column = 0; column < 4; ++column) {
        for (int row = 0; row < 4; ++row)
            EXPECT_NEAR(actual[column][row], expected[column][row], 1e-4) << column << ' ' << row;
    }
}

void expectNear(const Vector& actual, const Vector& expected) {
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_NEAR(actual[axis], expected[axis], 1e-2) << axis;
}

Lines materialOf(int light, const float* diffuse, const float* specular, const float* ambient,
                 const float* constant, const float* linear, const float* quadratic) {
    const GLenum name = GL_LIGHT0 + unsigned(light);
    return {call("glLightfv", name, GL_DIFFUSE, diffuse),
            call("glLightfv", name, GL_SPECULAR, specular),
            call("glLightfv", name, GL_AMBIENT, ambient),
            call("glLightfv", name, GL_CONSTANT_ATTENUATION, constant),
            call("glLightfv", name, GL_LINEAR_ATTENUATION, linear),
            call("glLightfv", name, GL_QUADRATIC_ATTENUATION, quadratic)};
}

} // namespace

TEST(VX_GLCamera, ProjectsInDegreesAndLooksFromItsEye) {
    HeadlessContext gl(8, 8);
    VX_GLCamera camera;
    EXPECT_EQ(std::bit_cast<unsigned>(camera.m_Aspect), 0x3FAAAAABu);
    EXPECT_EQ(std::bit_cast<unsigned>(camera.m_ZNear), 0x3DCCCCCDu);

    glMatrixMode(GL_PROJECTION);
    camera.SetProjectionPerspective();
    camera.SetProjectionPerspective();
    expectNear(currentMatrix(GL_PROJECTION_MATRIX),
               glm::perspectiveRH(glm::radians(30.0f), 4.0f / 3.0f, 0.1f, 30.0f));
    camera.SetProjectionOrtho(-2, 4, -1, 3, 1, 9);
    expectNear(currentMatrix(GL_PROJECTION_MATRIX), glm::ortho(-2.0f, 4.0f, -1.0f, 3.0f, 1.0f, 9.0f));

    glMatrixMode(GL_MODELVIEW);
    const Matrix view = glm::lookAtRH(Vector(0, 0, -5), Vector(0, 0, 0), Vector(0, 1, 0));
    camera.SetCameraView();
    camera.SetCameraView();
    expectNear(currentMatrix(GL_MODELVIEW_MATRIX), view);
    camera.SetCameraViewOnly();
    expectNear(currentMatrix(GL_MODELVIEW_MATRIX), view * view);
}

TEST(VX_GLCamera, FindsTheWorldBehindAPointOfTheWindow) {
    HeadlessContext gl(400, 300);
    glViewport(0, 0, 400, 300);
    VX_GLCamera camera;
    camera.m_ZNear = 1.0f;
    glMatrixMode(GL_PROJECTION);
    camera.SetProjectionPerspective();
    glMatrixMode(GL_MODELVIEW);
    camera.SetCameraView();

    // The eye is at -5 and looks along +Z, so +X of the world is on the left of the window.
    const float up = std::tan(glm::radians(15.0f));
    const struct {
        float x, y, z;
        Vector world;
    } cases[] = {{200, 150, 5, {0, 0, 0}},         {200, 150, 1, {0, 0, -4}},
                 {200, 150, 30, {0, 0, 25}},       {200, 0, 10, {0, 10 * up, 5}},
                 {200, 300, 10, {0, -10 * up, 5}}, {0, 0, 6, {6 * up * 4 / 3, 6 * up, 1}}};
    for (const auto& each : cases) {
        Vector world(0.0f);
        camera.CalcWorldCoord(each.x, each.y, each.z, &world);
        expectNear(world, each.world);
    }
    Vector world(0.0f);
    camera.CalcWorldCoord(200, 150, 0, &world);
    EXPECT_FALSE(std::isfinite(world.z));
}

TEST(VX_GLCameraLight, TakesItsAngleInRadiansAndKeepsItsMatrices) {
    auto camera = NSRef<VX_GLCameraLight>::adopt((new VX_GLCameraLight)->init());
    Matrix* projection = camera->ProjectionMatrixPerspective();
    expectNear(*projection, glm::perspectiveRH(30.0f, 4.0f / 3.0f, 0.1f, 30.0f));
    camera->m_Fovy = 0.5f;
    EXPECT_EQ(camera->ProjectionMatrixPerspective(), projection);
    EXPECT_EQ(projection, &camera->m_ProjectionMatrix);
    EXPECT_NEAR((*projection)[1][1], 1.0 / std::tan(0.25), 1e-4);

    EXPECT_EQ(camera->CameraMatrixLookAt(), &camera->m_CameraMatrix);
    expectNear(camera->m_CameraMatrix, glm::lookAtRH(Vector(0, 0, -5), Vector(0, 0, 0), Vector(0, 1, 0)));
    for (const Matrix* untouched :
         {&camera->m_ModelView_Translate, &camera->m_ModelView_Rotation, &camera->m_ModelView_Scale})
        EXPECT_EQ(*untouched, Matrix(1.0f));
}

TEST(Lights, SendTheirMaterialButNotTheirPosition) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    auto camera = NSRef<VX_GLCameraLight>::adopt((new VX_GLCameraLight)->init());
    camera->ApplyLightMaterial(3);
    EXPECT_EQ(recorder.take(), materialOf(3, &camera->m_Diffuse.x, &camera->m_Specular.x,
                                          &camera->m_Ambient.x, &camera->m_ConstantAttenuation,
                                          &camera->m_LinearAttenuation, &camera->m_QuadraticAttenuation));

    VX_GLLight light;
    light.SetPosition(5, Vector(1, 2, 3));
    light.SetAttenuation(5, 0.5f, 0.25f, 0.125f);
    EXPECT_EQ(recorder.take(), Lines());
    EXPECT_EQ(light.m_Position[5], glm::tvec4<float>(1, 2, 3, 0));
    light.ApplyLightMaterial(5);
    EXPECT_EQ(recorder.take(), materialOf(5, &light.m_Diffuse[5].x, &light.m_Specular[5].x,
                                          &light.m_Ambient[5].x, &light.m_ConstantAttenuation[5],
                                          &light.m_LinearAttenuation[5], &light.m_QuadraticAttenuation[5]));
    float factor = 0.0f;
    glGetLightfv(GL_LIGHT5, GL_LINEAR_ATTENUATION, &factor);
    EXPECT_EQ(factor, 0.25f);

    light.m_Position[5].w = 1.0f;
    light.SetPosition(5, Vector(4, 5, 6));
    EXPECT_EQ(light.m_Position[5].w, 1.0f) << "only a direct write makes a light positional";
    light.SetDirecionalLight(5);
    EXPECT_EQ(recorder.take(), Lines{call("glLightfv", GL_LIGHT5, GL_POSITION, &light.m_Position[5].x)});
    EXPECT_EQ(light.m_Position[5], glm::tvec4<float>(4, 5, 6, 0));

    for (const int outside : {-1, 8}) {
        light.SetPosition(outside, Vector(9, 9, 9));
        light.SetAttenuation(outside, 9, 9, 9);
        light.SetDirecionalLight(outside);
        light.ApplyLightMaterial(outside);
    }
    EXPECT_EQ(recorder.take(), Lines());
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/camera/VX_GLCamera.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <GL/glu.h>

void VX_GLCamera::SetProjectionPerspective() {
    VX_NEEDS_CONTEXT();
    glLoadIdentity();
    gluPerspective(m_Fovy, m_Aspect, m_ZNear, m_ZFar);
}

void VX_GLCamera::SetProjectionOrtho(double left, double right, double bottom, double top, double zNear,
                                     double zFar) {
    VX_NEEDS_CONTEXT();
    glLoadIdentity();
    glOrtho(left, right, bottom, top, zNear, zFar);
}

void VX_GLCamera::SetCameraView() {
    VX_NEEDS_CONTEXT();
    glLoadIdentity();
    SetCameraViewOnly();
}

void VX_GLCamera::SetCameraViewOnly() {
    VX_NEEDS_CONTEXT();
    gluLookAt(m_EyeAt.x, m_EyeAt.y, m_EyeAt.z, m_LookAt.x, m_LookAt.y, m_LookAt.z, m_Up.x, m_Up.y, m_Up.z);
}

void VX_GLCamera::CalcWorldCoord(float x, float y, float z, glm::tvec3<float>* result) {
    VX_NEEDS_CONTEXT();
    const float depth = (m_ZFar - m_ZFar * m_ZNear / z) / (m_ZFar - m_ZNear);

    GLint viewport[4] = {};
    GLdouble modelView[16] = {};
    GLdouble projection[16] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    glGetDoublev(GL_MODELVIEW_MATRIX, modelView);
    glGetDoublev(GL_PROJECTION_MATRIX, projection);

    GLdouble world[3] = {};
    const double windowY = static_cast<double>(viewport[3]) - static_cast<double>(y);
    gluUnProject(x, windowY, depth, modelView, projection, viewport, &world[0], &world[1], &world[2]);
    *result = glm::tvec3<float>(world[0], world[1], world[2]);
}

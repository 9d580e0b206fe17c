// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/camera/VX_GLCameraLight.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>
#include <glm/gtc/matrix_transform.hpp>

VX_GLCameraLight* VX_GLCameraLight::init() {
    if (!NSObject::init())
        return nullptr;
    m_Fovy = 30.0f; // taken as radians: docs/kept-behaviour.md
    m_Aspect = 4.0f / 3.0f;
    m_ZNear = 0.1f;
    m_ZFar = 30.0f;
    m_EyeAt = {0.0f, 0.0f, -5.0f};
    m_LookAt = {0.0f, 0.0f, 0.0f};
    m_Up = {0.0f, 1.0f, 0.0f};
    m_LightPosition = {0.0f, 0.0f, 1.0f};
    m_Ambient = {0.0f, 0.0f, 0.0f, 0.0f};
    m_Diffuse = {1.0f, 1.0f, 1.0f, 1.0f};
    m_Specular = {1.0f, 1.0f, 1.0f, 1.0f};
    m_ConstantAttenuation = 1.0f;
    m_LinearAttenuation = 0.0f;
    m_QuadraticAttenuation = 0.0f;
    return this;
}

glm::tmat4x4<float>* VX_GLCameraLight::ProjectionMatrixPerspective() {
    m_ProjectionMatrix = glm::perspectiveRH(m_Fovy, m_Aspect, m_ZNear, m_ZFar);
    return &m_ProjectionMatrix;
}

glm::tmat4x4<float>* VX_GLCameraLight::CameraMatrixLookAt() {
    m_CameraMatrix = glm::lookAtRH(m_EyeAt, m_LookAt, m_Up);
    return &m_CameraMatrix;
}

void VX_GLCameraLight::ApplyLightMaterial(int number) {
    VX_NEEDS_CONTEXT();
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(number);
    glLightfv(light, GL_DIFFUSE, &m_Diffuse.x);
    glLightfv(light, GL_SPECULAR, &m_Specular.x);
    glLightfv(light, GL_AMBIENT, &m_Ambient.x);
    glLightfv(light, GL_CONSTANT_ATTENUATION, &m_ConstantAttenuation);
    glLightfv(light, GL_LINEAR_ATTENUATION, &m_LinearAttenuation);
    glLightfv(light, GL_QUADRATIC_ATTENUATION, &m_QuadraticAttenuation);
}

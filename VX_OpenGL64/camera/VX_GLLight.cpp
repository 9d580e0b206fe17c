// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/camera/VX_GLLight.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

namespace {

bool isLight(int number) {
    return number >= 0 && number < VX_GLLight::kLights;
}

} // namespace

VX_GLLight::VX_GLLight() {
    for (int number = 0; number < kLights; ++number) {
        m_Position[number] = {0.0f, 0.0f, 1.0f, 0.0f};
        m_Ambient[number] = {0.0f, 0.0f, 0.0f, 0.0f};
        m_Diffuse[number] = {1.0f, 1.0f, 1.0f, 1.0f};
        m_Specular[number] = {1.0f, 1.0f, 1.0f, 1.0f};
        m_ConstantAttenuation[number] = 1.0f;
        m_LinearAttenuation[number] = 0.0f;
        m_QuadraticAttenuation[number] = 0.0f;
    }
}

VX_GLLight::~VX_GLLight() = default;

void VX_GLLight::SetDirecionalLight(int number) {
    VX_NEEDS_CONTEXT();
    if (!isLight(number))
        return;
    m_Position[number].w = 0.0f;
    glLightfv(GL_LIGHT0 + static_cast<GLenum>(number), GL_POSITION, &m_Position[number].x);
}

void VX_GLLight::SetPosition(int number, const glm::tvec3<float>& position) {
    if (isLight(number))
        m_Position[number] = glm::tvec4<float>(position, m_Position[number].w);
}

void VX_GLLight::SetAttenuation(int number, float constant, float linear, float quadratic) {
    if (!isLight(number))
        return;
    m_ConstantAttenuation[number] = constant;
    m_LinearAttenuation[number] = linear;
    m_QuadraticAttenuation[number] = quadratic;
}

void VX_GLLight::ApplyLightMaterial(int number) {
    VX_NEEDS_CONTEXT();
    if (!isLight(number))
        return;
    const GLenum light = GL_LIGHT0 + static_cast<GLenum>(number);
    glLightfv(light, GL_DIFFUSE, &m_Diffuse[number].x);
    glLightfv(light, GL_SPECULAR, &m_Specular[number].x);
    glLightfv(light, GL_AMBIENT, &m_Ambient[number].x);
    glLightfv(light, GL_CONSTANT_ATTENUATION, &m_ConstantAttenuation[number]);
    glLightfv(light, GL_LINEAR_ATTENUATION, &m_LinearAttenuation[number]);
    glLightfv(light, GL_QUADRATIC_ATTENUATION, &m_QuadraticAttenuation[number]);
}

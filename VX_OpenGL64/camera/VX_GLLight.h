// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_Platform/VX_Export.h>

/// Table of the eight fixed-function lights. Light numbers are 0 to 7; with any other nothing is done.
class VX_EXPORT VX_GLLight {
public:
    /// Eight white directional lights from +Z, without attenuation.
    VX_GLLight();
    virtual ~VX_GLLight();

    /// Makes the light directional (w = 0) and sends its position, which GL transforms by the current
    /// modelview matrix. Needs a GL context current on the calling thread. GL: glLightfv with GL_POSITION.
    void SetDirecionalLight(int number);
    /// Stores x, y and z; w stays, and nothing goes to GL. For a positional light write w of `m_Position` and
    /// send it.
    void SetPosition(int number, const glm::tvec3<float>& position);
    /// Stores the three factors; nothing goes to GL.
    void SetAttenuation(int number, float constant, float linear, float quadratic);
    /// Sends colours and attenuation of the light, neither its position nor glEnable. Needs a GL context
    /// current on the calling thread. GL: glLightfv for diffuse, specular, ambient, constant, linear and
    /// quadratic attenuation, in this order.
    void ApplyLightMaterial(int number);

    /// How many lights there are, as in GL.
    static constexpr int kLights = 8;

    /// Homogeneous, w = 0 for a directional light; (0, 0, 1, 0).
    glm::tvec4<float> m_Position[kLights];
    /// (0, 0, 0, 0).
    glm::tvec4<float> m_Ambient[kLights];
    /// (1, 1, 1, 1).
    glm::tvec4<float> m_Diffuse[kLights];
    /// (1, 1, 1, 1).
    glm::tvec4<float> m_Specular[kLights];
    /// 1, 0 and 0.
    float m_ConstantAttenuation[kLights];
    float m_LinearAttenuation[kLights];
    float m_QuadraticAttenuation[kLights];
};

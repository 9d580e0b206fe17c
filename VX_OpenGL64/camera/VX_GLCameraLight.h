// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_Platform/Foundation/NSObject.h>

/// Camera with one light: GLM matrices handed out by pointer, and a light for the fixed-function state.
/// Right-handed, with clip-space depth from -1 to 1. Created as `(new VX_GLCameraLight)->init()`.
class VX_EXPORT VX_GLCameraLight : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(VX_GLCameraLight)

    /// Sets the values named at the fields; before it vectors and numbers are 0 and matrices identity.
    VX_GLCameraLight* init() override;

    /// Computes the perspective of the fields into `m_ProjectionMatrix` and returns its address: the object's
    /// own, the same on each call. `m_Fovy` is taken as radians; an aspect of 0 or a view of no depth gives a
    /// matrix that is not finite. Makes no GL call.
    glm::tmat4x4<float>* ProjectionMatrixPerspective();
    /// The same for the view of the fields and `m_CameraMatrix`.
    glm::tmat4x4<float>* CameraMatrixLookAt();

    /// Sends colours and attenuation to light `number`, 0 to 7; neither its position nor glEnable. Needs a GL
    /// context current on the calling thread. GL: glLightfv for diffuse, specular, ambient, constant, linear
    /// and quadratic attenuation, in this order.
    void ApplyLightMaterial(int number);

    /// What `ProjectionMatrixPerspective` has computed last; the identity before.
    glm::tmat4x4<float> m_ProjectionMatrix{1.0f};
    /// What `CameraMatrixLookAt` has computed last; the identity before.
    glm::tmat4x4<float> m_CameraMatrix{1.0f};
    /// For subclasses; identity.
    glm::tmat4x4<float> m_ModelView_Translate{1.0f};
    glm::tmat4x4<float> m_ModelView_Rotation{1.0f};
    glm::tmat4x4<float> m_ModelView_Scale{1.0f};
    /// Vertical field of view in radians. `init` leaves 30, which is hardly what is wanted: set it before
    /// asking for the projection.
    float m_Fovy = 0.0f;
    /// Width over height; 4/3.
    float m_Aspect = 0.0f;
    /// Distances of the planes from the eye; 0.1 and 30.
    float m_ZNear = 0.0f;
    float m_ZFar = 0.0f;
    /// (0, 0, -5).
    glm::tvec3<float> m_EyeAt{0.0f};
    /// (0, 0, 0).
    glm::tvec3<float> m_LookAt{0.0f};
    /// (0, 1, 0).
    glm::tvec3<float> m_Up{0.0f};
    /// For subclasses, never sent; (0, 0, 1).
    glm::tvec3<float> m_LightPosition{0.0f};
    /// (0, 0, 0, 0).
    glm::tvec4<float> m_Ambient{0.0f};
    /// (1, 1, 1, 1).
    glm::tvec4<float> m_Diffuse{0.0f};
    /// (1, 1, 1, 1).
    glm::tvec4<float> m_Specular{0.0f};
    /// 1, 0 and 0.
    float m_ConstantAttenuation = 0.0f;
    float m_LinearAttenuation = 0.0f;
    float m_QuadraticAttenuation = 0.0f;

protected:
    ~VX_GLCameraLight() override = default;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_GLM.h>
#include <VX_Platform/VX_Export.h>

/// Camera on the fixed-function matrix stack. Right-handed: the eye looks down its own -Z, `m_Up` is upward.
///
/// No operation selects a matrix stack: call `glMatrixMode` first. All of them need a GL context current on
/// the calling thread.
class VX_EXPORT VX_GLCamera {
public:
    /// Replaces the current matrix by a perspective of the fields. GL: glLoadIdentity, gluPerspective.
    void SetProjectionPerspective();
    /// Replaces the current matrix by a parallel projection of the box given in eye space; `zNear` and `zFar`
    /// are distances along the view. The fields are not touched. GL: glLoadIdentity, glOrtho.
    void SetProjectionOrtho(double left, double right, double bottom, double top, double zNear, double zFar);
    /// Replaces the current matrix by the view of the fields. GL: glLoadIdentity, gluLookAt.
    void SetCameraView();
    /// Multiplies the view of the fields onto the current matrix. GL: gluLookAt.
    void SetCameraViewOnly();

    /// World position of what is seen at a point of the window: `x` in pixels from the viewport's left edge,
    /// `y` in pixels from its top, `z` the distance from the eye along the view, from `m_ZNear` to `m_ZFar`.
    /// It goes by the matrices that are set, which should be those of this camera. `result` (not null) is not
    /// finite for a `z` of 0, and (0, 0, 0) when the matrices cannot be inverted. GL: glGetIntegerv,
    /// glGetDoublev, gluUnProject.
    void CalcWorldCoord(float x, float y, float z, glm::tvec3<float>* result);

    /// Vertical field of view in degrees.
    float m_Fovy = 30.0f;
    /// Width over height.
    float m_Aspect = 4.0f / 3.0f;
    /// Distances of the planes from the eye, above 0.
    float m_ZNear = 0.1f;
    float m_ZFar = 30.0f;
    /// The point looked at, in world coordinates.
    glm::tvec3<float> m_LookAt{0.0f, 0.0f, 0.0f};
    /// Where the eye is, in world coordinates; not where it looks.
    glm::tvec3<float> m_EyeAt{0.0f, 0.0f, -5.0f};
    /// What is up in the picture; any length but 0, and not along the view.
    glm::tvec3<float> m_Up{0.0f, 1.0f, 0.0f};
};

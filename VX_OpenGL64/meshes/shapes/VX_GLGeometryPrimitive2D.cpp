// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryPrimitive2D.h>

#include <cmath>

using Vec3 = glm::tvec3<float>;

int VX_GLGeometryPrimitive2D::DotDonut(float radiusA, float radiusB, int dotCount, int stepCount, float fill,
                                       glm::tvec3<float>* out) {
    if (!out)
        return static_cast<int>((static_cast<unsigned>(stepCount) * 2u + 2u) *
                                static_cast<unsigned>(dotCount));
    if (dotCount < 1)
        return 0;
    const auto anglePerDot =
        static_cast<float>(6.283185307179586 / static_cast<double>(static_cast<float>(dotCount)));
    const float span = anglePerDot * fill;
    float start = 0.0f;
    for (int dot = 0; dot < dotCount; ++dot) {
        for (int j = 0; j < stepCount; ++j) {
            const float x = static_cast<float>(j) * span / static_cast<float>(stepCount - 1) + start;
            const float c = std::cos(x);
            const float n = std::sin(x);
            if (j == 0) {
                // z stays: docs/kept-behaviour.md.
                out->x = c * radiusA;
                out->y = n * radiusA;
                ++out;
            }
            *out++ = Vec3(c * radiusA, n * radiusA, 0.0f);
            *out++ = Vec3(c * radiusB, n * radiusB, 0.0f);
            if (j == stepCount - 1)
                *out++ = Vec3(c * radiusB, n * radiusB, 0.0f);
        }
        start += anglePerDot;
    }
    return 0;
}

int VX_GLGeometryPrimitive2D::Arrow1(float length, float headWidth, float shaftWidth, float headRatio,
                                     glm::tvec3<float>* out) {
    if (!out)
        return 21;
    const float tip = length * 0.5f;
    const float shaftEnd = length * 0.5f - length * headRatio * 0.5f;
    const float wing = length * 0.5f - headWidth * 0.5f / headRatio;
    const float notch = wing - (headWidth * 0.5f - shaftWidth * 0.5f) / headRatio;
    const Vec3 points[] = {
        {length * -0.5f, shaftWidth * -0.5f, 0.0f},
        {shaftEnd, shaftWidth * -0.5f, 0.0f},
        {shaftEnd, shaftWidth * 0.5f, 0.0f},
        {length * -0.5f, shaftWidth * 0.5f, 0.0f},
        {notch, headWidth * -0.5f, 0.0f},
        {wing, headWidth * -0.5f, 0.0f},
        {tip, 0.0f, 0.0f},
        {wing, headWidth * 0.5f, 0.0f},
        {notch, headWidth * 0.5f, 0.0f},
    };
    constexpr int triangles[] = {0, 1, 3, 1, 2, 3, 4, 5, 1, 5, 6, 1, 1, 6, 2, 2, 6, 7, 2, 7, 8};
    for (int corner : triangles)
        *out++ = points[corner];
    return 0;
}

// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>

/// How the scene is looked at; set on the main thread, read by the drawing one.
struct Look {
    std::atomic<float> yaw{30.0f};   ///< degrees around the vertical
    std::atomic<float> pitch{20.0f}; ///< degrees downward
    std::atomic<bool> smooth{false};
    std::atomic<bool> wireframe{false};

    /// Degrees around the vertical: the viewer's own turn and ten a second.
    float turnAt(double seconds) const { return yaw + 10.0f * static_cast<float>(seconds); }
};

/// Something to be drawn around the origin, about one unit in radius.
class Scene {
public:
    virtual ~Scene() = default;

    /// With the context current: fills the buffers, and lets them go.
    virtual void prepare() = 0;
    virtual void release() = 0;
    /// With projection, view and lights set. `aspect` is width over height of what is seen, `time` in seconds
    /// since drawing began.
    virtual void draw(const Look& look, float aspect, double time) = 0;
};

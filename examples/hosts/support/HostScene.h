// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/VX_OpenGL64.h>

#include <atomic>
#include <iterator>

/// A lit, turning box on a ground whose colour the host chooses. The host's thread turns the knobs, the
/// view's thread draws.
class HostScene : public VX_GLRenderpipeline {
public:
    /// Colours as 0xRRGGBB: of the ground, and of the one that comes next.
    unsigned ground() const { return kGrounds[m_Ground]; }
    unsigned nextGround() const { return kGrounds[(m_Ground + 1) % std::size(kGrounds)]; }
    void takeNextGround() { m_Ground = (m_Ground + 1) % unsigned(std::size(kGrounds)); }
    /// Degrees a second.
    void setSpeed(int speed) { m_Speed = speed; }
    int speed() const { return m_Speed; }

protected:
    void doStartRender() override;
    void doStopRender() override;
    void renderPipeline(CGRect* bounds) override;

private:
    static constexpr unsigned kGrounds[] = {0x1d3557, 0x1f6f54, 0x7a3b69};

    void setCamera(float aspect);

    std::atomic<unsigned> m_Ground = 0;
    std::atomic<int> m_Speed = 60;
    double m_Time = 0.0;
    double m_Angle = 30.0;
    VX_GLMeshDataRenderer m_Box;
    VX_GLCamera m_Camera;
    VX_GLLight m_Light;
};

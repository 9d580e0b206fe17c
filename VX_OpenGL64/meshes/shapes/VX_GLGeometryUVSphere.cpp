// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometryUVSphere.h>

#include <VX_OpenGL64/meshes/private/VertexLayout.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <cmath>
#include <cstdint>
#include <limits>

namespace {

constexpr float kPi = 3.14159f;
constexpr float kHalfPi = 1.570795f;
constexpr float kTop = 0.999f;

/// Vertices of the whole strip: each band has two rings, a vertex more at its end and, but for the first, one
/// more at its start, which join the bands.
int vertexCount(int divisions) {
    if (divisions < 2)
        return -1;
    const std::int64_t bands = divisions / 2;
    const std::int64_t count = (bands * (divisions + std::int64_t{1}) + bands) * 2 - 1;
    return count > std::numeric_limits<int>::max() ? std::numeric_limits<int>::max()
                                                   : static_cast<int>(count);
}

/// One edge of a band: all its vertices have the same height and the same V.
struct Ring {
    float cosine;
    float sine;
    float v;

    Ring(int step, float divisions, float n) : v(kTop - n / divisions) {
        const float latitude = static_cast<float>(2 * step) * kPi / divisions - kHalfPi;
        cosine = std::cos(latitude);
        sine = std::sin(latitude);
    }
};

class StripWriter {
public:
    StripWriter(const vx::VertexLayout& layout, void* vertex, int divisions, float radius)
        : m_Layout(layout),
          m_Vertex(vertex),
          m_Steps(divisions),
          m_Divisions(static_cast<float>(divisions)),
          m_Radius(radius) {}

    void band(int i, const glm::tvec4<float>& color) {
        const Ring lower(i, m_Divisions, static_cast<float>(2 * i));
        const Ring upper(i + 1, m_Divisions, static_cast<float>(2 * i + 2));
        if (i > 0)
            write(lower, 0, color);
        for (int j = 0; j <= m_Steps; ++j) {
            write(lower, j, color);
            write(upper, j, color);
        }
        write(upper, m_Steps, color);
    }

    int written() const { return m_Written; }

private:
    void write(const Ring& ring, int j, const glm::tvec4<float>& color) {
        const float longitude = static_cast<float>(2 * j) * kPi / m_Divisions;
        const glm::tvec3<float> normal(ring.cosine * std::cos(longitude), ring.sine,
                                       ring.cosine * std::sin(longitude));
        const float u = kTop - static_cast<float>(j) / m_Divisions;
        m_Vertex = vx::writeVertex(m_Layout, m_Vertex, normal * m_Radius, color, normal, {u, ring.v});
        ++m_Written;
    }

    const vx::VertexLayout& m_Layout;
    void* m_Vertex;
    int m_Steps;
    float m_Divisions;
    float m_Radius;
    int m_Written = 0;
};

} // namespace

VX_GLGeometryUVSphere::VX_GLGeometryUVSphere() = default;

void VX_GLGeometryUVSphere::Generate(int format) {
    const int count = vertexCount(m_Divisions);
    AllocateVertex(format, count);
    if (m_Divisions < 2) {
        NSLog("##");
        return;
    }
    // Without a block nothing can be written and nothing is said.
    const vx::VertexLayout* layout = vx::vertexLayout(m_Vertex->m_Format);
    if (!layout)
        return;
    StripWriter strip(*layout, m_Vertex->m_Data, m_Divisions, m_Radius);
    glm::tvec4<float> color = m_BandColor[0];
    for (int i = 0; i < m_Divisions / 2; ++i) {
        strip.band(i, color);
        // By the band just finished: docs/kept-behaviour.md.
        if (m_BandSize > 0)
            color = m_BandColor[i / m_BandSize % 2];
    }
    if (strip.written() != count)
        NSLog("##");
}

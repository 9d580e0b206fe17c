// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/VX_GLGeometrySphere.h>

#include <VX_OpenGL64/meshes/VertexLayout.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Vec3 = glm::tvec3<float>;

constexpr float shorter = 0.5257311f;
constexpr float longer = 0.8506508f;

Vec3 middle(const Vec3& p, const Vec3& q) {
    const Vec3 m = (p + q) * 0.5f;
    return m / std::sqrt(m.x * m.x + m.y * m.y + m.z * m.z);
}

/// Writes triangles of one format. The format is a constant of the type, so that no vertex asks for it.
template <int format>
class TriangleWriter {
public:
    TriangleWriter(void* vertex, float radius, bool outward)
        : m_Vertex(vertex), m_Radius(radius), m_Outward(outward) {}

    void split(const Vec3& p, const Vec3& q, const Vec3& r, int depth) {
        if (depth < 1) {
            write(p, q, r);
            return;
        }
        const Vec3 pq = middle(p, q), pr = middle(p, r), rq = middle(r, q);
        split(p, pq, pr, depth - 1);
        split(q, rq, pq, depth - 1);
        split(r, pr, rq, depth - 1);
        split(pq, rq, pr, depth - 1);
    }

    void* vertex() const { return m_Vertex; }

private:
    void write(const Vec3& p, const Vec3& q, const Vec3& r) {
        if (m_Outward) {
            corner(r, r);
            corner(q, q);
            corner(p, p);
        } else {
            corner(p, -p);
            corner(q, -q);
            corner(r, -r);
        }
    }

    void corner(const Vec3& p, const Vec3& normal) {
        m_Vertex = vx::writeVertex(*vx::vertexLayout(format), m_Vertex, p * m_Radius,
                                   {1.0f, 1.0f, 1.0f, 1.0f}, normal, {p.x, p.y});
    }

    void* m_Vertex;
    float m_Radius;
    bool m_Outward;
};

template <int format>
void* writeTriangles(void* vertex, const float* p, const float* q, const float* r, int depth, float radius,
                     bool outward) {
    TriangleWriter<format> writer(vertex, radius, outward);
    writer.split({p[0], p[1], p[2]}, {q[0], q[1], q[2]}, {r[0], r[1], r[2]}, depth);
    return writer.vertex();
}

} // namespace

const float vdata[12][3] = {
    {-shorter, 0, longer}, {shorter, 0, longer},  {-shorter, 0, -longer}, {shorter, 0, -longer},
    {0, longer, shorter},  {0, longer, -shorter}, {0, -longer, shorter},  {0, -longer, -shorter},
    {longer, shorter, 0},  {-longer, shorter, 0}, {longer, -shorter, 0},  {-longer, -shorter, 0},
};

const unsigned int tindices[20][3] = {
    {0, 4, 1}, {0, 9, 4},  {9, 5, 4},  {4, 5, 8},  {4, 8, 1},  {8, 10, 1}, {8, 3, 10},
    {5, 3, 8}, {5, 2, 3},  {2, 7, 3},  {7, 10, 3}, {7, 6, 10}, {7, 11, 6}, {11, 0, 6},
    {0, 1, 6}, {6, 1, 10}, {9, 0, 11}, {9, 11, 2}, {9, 2, 5},  {7, 2, 11},
};

VX_GLGeometrySphere::VX_GLGeometrySphere() = default;

void VX_GLGeometrySphere::Generate(int format) {
    const float vertices = std::pow(4.0f, static_cast<float>(m_Subdivision)) * 60.0f;
    constexpr float tooMany = 2147483648.0f;
    AllocateVertex(format, vertices < tooMany ? static_cast<int>(vertices) : std::numeric_limits<int>::max());
    if (!m_Vertex->m_Data)
        return;
    // Only a negative subdivision gives fewer vertices than twenty triangles need.
    const int perTriangle = m_Subdivision < 0 ? 3 : static_cast<int>(vertices) / 20;
    const int triangles = std::min(20, m_Vertex->m_Count / perTriangle);
    void* vertex = m_Vertex->m_Data;
    for (int i = 0; i < triangles; ++i) {
        Vec3 corners[3];
        for (int corner = 0; corner < 3; ++corner)
            std::memcpy(&corners[corner], vdata[tindices[i][corner]], sizeof(Vec3));
        vertex = drawtri(vertex, m_Vertex->m_Format, &corners[0].x, &corners[1].x, &corners[2].x,
                         m_Subdivision, m_Radius);
    }
}

void* VX_GLGeometrySphere::drawtri(void* vertex, int format, float* a, float* b, float* c, int depth,
                                   float radius) {
    switch (format) {
        case VX_GLVertexP:
            return writeTriangles<VX_GLVertexP>(vertex, a, b, c, depth, radius, m_Outward);
        case VX_GLVertexPN:
            return writeTriangles<VX_GLVertexPN>(vertex, a, b, c, depth, radius, m_Outward);
        case VX_GLVertexPT:
            return writeTriangles<VX_GLVertexPT>(vertex, a, b, c, depth, radius, m_Outward);
        case VX_GLVertexPNT:
            return writeTriangles<VX_GLVertexPNT>(vertex, a, b, c, depth, radius, m_Outward);
        case VX_GLVertexPD:
            return writeTriangles<VX_GLVertexPD>(vertex, a, b, c, depth, radius, m_Outward);
        case VX_GLVertexPDN:
            return writeTriangles<VX_GLVertexPDN>(vertex, a, b, c, depth, radius, m_Outward);
        case VX_GLVertexPDT:
            return writeTriangles<VX_GLVertexPDT>(vertex, a, b, c, depth, radius, m_Outward);
        case VX_GLVertexPDNT:
            return writeTriangles<VX_GLVertexPDNT>(vertex, a, b, c, depth, radius, m_Outward);
        case VX_GLVertexPNB:
            return writeTriangles<VX_GLVertexPNB>(vertex, a, b, c, depth, radius, m_Outward);
        default:
            return vertex;
    }
}

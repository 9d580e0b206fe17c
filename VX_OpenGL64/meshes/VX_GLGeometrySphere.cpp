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

/// Four vectors at once, which cost as much as one.
using Lanes = float __attribute__((vector_size(16)));

Lanes roots(Lanes squares) {
#ifdef __SSE__
    return __builtin_ia32_sqrtps(squares);
#else
    return Lanes{std::sqrt(squares[0]), std::sqrt(squares[1]), std::sqrt(squares[2]), std::sqrt(squares[3])};
#endif
}

/// Four points brought onto the unit sphere.
class Unit {
public:
    Unit(Lanes x, Lanes y, Lanes z) {
        const Lanes squares = x * x + y * y + z * z;
        const Lanes length = roots(squares);
        m_X = x / length;
        m_Y = y / length;
        m_Z = z / length;
    }

    Vec3 operator[](int i) const { return {m_X[i], m_Y[i], m_Z[i]}; }

private:
    Lanes m_X, m_Y, m_Z;
};

/// A point of the unit sphere with the vertex that it makes, ready to be copied wherever it is a corner.
template <int format>
struct Point {
    static constexpr const vx::VertexLayout& layout = *vx::vertexLayout(format);

    /// The tangent, which stands last, is not written.
    static constexpr int size = layout.tangent == vx::VertexLayout::none ? layout.stride : layout.tangent;

    Vec3 at;
    float vertex[size / sizeof(float)];
};

/// Writes triangles of one format to one side. Both are constants of the type, so that no vertex asks for
/// them.
template <int format, bool outward>
class TriangleWriter {
public:
    using Corner = Point<format>;

    TriangleWriter(void* vertex, float radius) : m_Vertex(static_cast<char*>(vertex)), m_Radius(radius) {}

    Corner point(const Vec3& at) const {
        Corner corner;
        corner.at = at;
        vx::writeVertex(Corner::layout, corner.vertex, at * m_Radius, {1.0f, 1.0f, 1.0f, 1.0f},
                        outward ? at : -at, {at.x, at.y});
        return corner;
    }

    void split(const Corner& p, const Corner& q, const Corner& r, int depth) {
        if (depth < 1) {
            write(p, q, r);
            return;
        }
        const Lanes x = {p.at.x + q.at.x, p.at.x + r.at.x, r.at.x + q.at.x, 1.0f};
        const Lanes y = {p.at.y + q.at.y, p.at.y + r.at.y, r.at.y + q.at.y, 1.0f};
        const Lanes z = {p.at.z + q.at.z, p.at.z + r.at.z, r.at.z + q.at.z, 1.0f};
        const Unit middle(x * 0.5f, y * 0.5f, z * 0.5f);
        const Corner pq = point(middle[0]), pr = point(middle[1]), rq = point(middle[2]);
        if (depth == 1) {
            write(p, pq, pr);
            write(q, rq, pq);
            write(r, pr, rq);
            write(pq, rq, pr);
            return;
        }
        split(p, pq, pr, depth - 1);
        split(q, rq, pq, depth - 1);
        split(r, pr, rq, depth - 1);
        split(pq, rq, pr, depth - 1);
    }

    void* vertex() const { return m_Vertex; }

private:
    void write(const Corner& p, const Corner& q, const Corner& r) {
        char* out = m_Vertex;
        m_Vertex += 3 * Corner::layout.stride;
        std::memcpy(out, (outward ? r : p).vertex, sizeof p.vertex);
        std::memcpy(out + Corner::layout.stride, q.vertex, sizeof q.vertex);
        std::memcpy(out + 2 * Corner::layout.stride, (outward ? p : r).vertex, sizeof r.vertex);
    }

    char* m_Vertex;
    float m_Radius;
};

template <int format, bool outward>
void* writeTriangles(void* vertex, const float* p, const float* q, const float* r, int depth, float radius) {
    TriangleWriter<format, outward> writer(vertex, radius);
    writer.split(writer.point({p[0], p[1], p[2]}), writer.point({q[0], q[1], q[2]}),
                 writer.point({r[0], r[1], r[2]}), depth);
    return writer.vertex();
}

using Write = void* (*)(void*, const float*, const float*, const float*, int, float);

template <bool outward>
Write writerOf(int format) {
    switch (format) {
        case VX_GLVertexP:
            return writeTriangles<VX_GLVertexP, outward>;
        case VX_GLVertexPN:
            return writeTriangles<VX_GLVertexPN, outward>;
        case VX_GLVertexPT:
            return writeTriangles<VX_GLVertexPT, outward>;
        case VX_GLVertexPNT:
            return writeTriangles<VX_GLVertexPNT, outward>;
        case VX_GLVertexPD:
            return writeTriangles<VX_GLVertexPD, outward>;
        case VX_GLVertexPDN:
            return writeTriangles<VX_GLVertexPDN, outward>;
        case VX_GLVertexPDT:
            return writeTriangles<VX_GLVertexPDT, outward>;
        case VX_GLVertexPDNT:
            return writeTriangles<VX_GLVertexPDNT, outward>;
        case VX_GLVertexPNB:
            return writeTriangles<VX_GLVertexPNB, outward>;
        default:
            return nullptr;
    }
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
    const Write write = m_Outward ? writerOf<true>(format) : writerOf<false>(format);
    return write ? write(vertex, a, b, c, depth, radius) : vertex;
}

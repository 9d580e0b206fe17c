// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometrySphere.h>

#include <VX_OpenGL64/meshes/private/VertexLayout.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Vec3 = glm::tvec3<float>;

constexpr float kShorter = 0.5257311f;
constexpr float kLonger = 0.8506508f;

/// x, y, z and 0 of a vector; also one value of each of three vectors.
using Lanes = float __attribute__((vector_size(16)));

Lanes all(float value) {
    return Lanes{value, value, value, value};
}

Lanes roots(Lanes squares) {
#ifdef __SSE__
    return __builtin_ia32_sqrtps(squares);
#else
    return Lanes{std::sqrt(squares[0]), std::sqrt(squares[1]), std::sqrt(squares[2]), std::sqrt(squares[3])};
#endif
}

/// The lengths of three vectors, in the first three lanes.
Lanes lengths(Lanes p, Lanes q, Lanes r) {
    p *= p;
    q *= q;
    r *= r;
    const Lanes xy = __builtin_shufflevector(p, q, 0, 4, 1, 5);
    const Lanes z = __builtin_shufflevector(p, q, 2, 6, 3, 7);
    return roots(__builtin_shufflevector(xy, r, 0, 1, 4, 7) + __builtin_shufflevector(xy, r, 2, 3, 5, 7) +
                 __builtin_shufflevector(z, r, 0, 1, 6, 7));
}

/// A point of the unit sphere with the vertex that it makes, ready to be copied wherever it is a corner.
template <int format>
struct Point {
    static constexpr const vx::VertexLayout& kLayout = *vx::vertexLayout(format);

    /// The tangent, which stands last, is not written.
    static constexpr int kSize =
        kLayout.tangent == vx::VertexLayout::kNone ? kLayout.stride : kLayout.tangent;

    alignas(16) float vertex[kSize / sizeof(float)];
    Lanes at;
};

/// Writes triangles of one format to one side. Both are constants of the type, so that no vertex asks for
/// them.
template <int format, bool outward>
class TriangleWriter {
public:
    using Corner = Point<format>;

    TriangleWriter(void* vertex, float radius) : m_Vertex(static_cast<char*>(vertex)), m_Radius(radius) {}

    Corner point(Lanes at) const {
        constexpr float side = outward ? 1.0f : -1.0f;
        Corner corner;
        corner.at = at;
        if constexpr (format == VX_GLVertexPNT) { // the format of most meshes, put together from whole lanes
            const Lanes low = __builtin_shufflevector(at * m_Radius, at * side, 0, 1, 2, 4);
            const Lanes high = __builtin_shufflevector(at, at, 1, 2, 0, 1) * Lanes{side, side, 1.0f, 1.0f};
            std::memcpy(corner.vertex, &low, sizeof low);
            std::memcpy(corner.vertex + 4, &high, sizeof high);
        } else {
            const Vec3 p(at[0], at[1], at[2]);
            vx::writeVertex(Corner::kLayout, corner.vertex, p * m_Radius, {1.0f, 1.0f, 1.0f, 1.0f}, p * side,
                            {p.x, p.y});
        }
        return corner;
    }

    void split(const Corner& p, const Corner& q, const Corner& r, int depth) {
        if (depth < 1) {
            write(p, q, r);
            return;
        }
        const Lanes pqAt = (p.at + q.at) * 0.5f, prAt = (p.at + r.at) * 0.5f, rqAt = (r.at + q.at) * 0.5f;
        const Lanes length = lengths(pqAt, prAt, rqAt);
        const Corner pq = point(pqAt / all(length[0]));
        const Corner pr = point(prAt / all(length[1]));
        const Corner rq = point(rqAt / all(length[2]));
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
        m_Vertex += 3 * Corner::kLayout.stride;
        std::memcpy(out, (outward ? r : p).vertex, sizeof p.vertex);
        std::memcpy(out + Corner::kLayout.stride, q.vertex, sizeof q.vertex);
        std::memcpy(out + 2 * Corner::kLayout.stride, (outward ? p : r).vertex, sizeof r.vertex);
    }

    char* m_Vertex;
    float m_Radius;
};

template <int format, bool outward>
void* writeTriangles(void* vertex, const float* p, const float* q, const float* r, int depth, float radius) {
    TriangleWriter<format, outward> writer(vertex, radius);
    writer.split(writer.point(Lanes{p[0], p[1], p[2], 0.0f}), writer.point(Lanes{q[0], q[1], q[2], 0.0f}),
                 writer.point(Lanes{r[0], r[1], r[2], 0.0f}), depth);
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

const float VX_GLGeometrySphere::vdata[12][3] = {
    {-kShorter, 0, kLonger}, {kShorter, 0, kLonger},  {-kShorter, 0, -kLonger}, {kShorter, 0, -kLonger},
    {0, kLonger, kShorter},  {0, kLonger, -kShorter}, {0, -kLonger, kShorter},  {0, -kLonger, -kShorter},
    {kLonger, kShorter, 0},  {-kLonger, kShorter, 0}, {kLonger, -kShorter, 0},  {-kLonger, -kShorter, 0},
};

const unsigned int VX_GLGeometrySphere::tindices[20][3] = {
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

// SPDX-License-Identifier: MIT
#include <bench/XFileGenerator.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>

namespace {

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

/// A wavy sheet of `side` x `side` vertices.
class Sheet {
public:
    Sheet(FILE* out, int side) : m_Out(out), m_Side(side) {}

    void write() {
        std::fprintf(m_Out, "xof 0303txt 0032\n\ntemplate Vector {\n FLOAT x;\n FLOAT y;\n FLOAT z;\n}\n\n");
        std::fprintf(m_Out, "Mesh Sheet {\n %d;\n", vertices());
        writeVertices([](double u, double v, double* out) {
            out[0] = 100 * (u - 0.5);
            out[1] = 5 * std::sin(20 * u) * std::cos(17 * v);
            out[2] = 100 * (v - 0.5);
        });
        writeFaces();
        std::fprintf(m_Out, " MeshNormals {\n  %d;\n", vertices());
        writeVertices([](double u, double v, double* out) {
            const double x = -std::cos(20 * u) * std::cos(17 * v);
            const double z = 0.85 * std::sin(20 * u) * std::sin(17 * v);
            const double length = std::sqrt(x * x + 1 + z * z);
            out[0] = x / length;
            out[1] = 1 / length;
            out[2] = z / length;
        });
        writeFaces();
        std::fprintf(m_Out, " }\n MeshTextureCoords {\n  %d;\n", vertices());
        for (int i = 0; i < vertices(); ++i)
            std::fprintf(m_Out, "  %.6f;%.6f;%s\n", u(i), v(i), i + 1 < vertices() ? "," : ";");
        std::fprintf(m_Out, " }\n");
        writeMaterials();
        std::fprintf(m_Out, "}\n");
    }

private:
    int vertices() const { return m_Side * m_Side; }
    int faces() const { return 2 * (m_Side - 1) * (m_Side - 1); }
    double u(int vertex) const { return static_cast<double>(vertex % m_Side) / m_Side; }
    double v(int vertex) const { return static_cast<double>(vertex / m_Side) / m_Side; }

    template <class Function>
    void writeVertices(Function value) {
        for (int i = 0; i < vertices(); ++i) {
            double out[3];
            value(u(i), v(i), out);
            std::fprintf(m_Out, "  %.6f;%.6f;%.6f;%s\n", out[0], out[1], out[2],
                         i + 1 < vertices() ? "," : ";");
        }
    }

    void writeFaces() {
        std::fprintf(m_Out, "  %d;\n", faces());
        for (int i = 0; i < faces(); ++i) {
            const int cell = i / 2, corner = cell / (m_Side - 1) * m_Side + cell % (m_Side - 1);
            const int across = corner + m_Side + 1;
            std::fprintf(m_Out, "  3;%d,%d,%d;%s\n", corner, i % 2 ? corner + m_Side : across,
                         i % 2 ? across : corner + 1, i + 1 < faces() ? "," : ";");
        }
    }

    void writeMaterials() {
        std::fprintf(m_Out, " MeshMaterialList {\n  1;\n  %d;\n", faces());
        for (int i = 0; i < faces(); ++i)
            std::fprintf(m_Out, "  0%s\n", i + 1 < faces() ? "," : ";;");
        std::fprintf(m_Out,
                     "  Material {\n   0.800000;0.800000;0.800000;1.000000;;\n   10.000000;\n"
                     "   0.500000;0.500000;0.500000;;\n   0.000000;0.000000;0.000000;;\n  }\n }\n");
    }

    FILE* m_Out;
    int m_Side;
};

} // namespace

void generateXFile(const std::string& path, std::size_t bytes) {
    constexpr double bytesPerVertex = 198;
    const File file(std::fopen(path.c_str(), "w"), std::fclose);
    if (file)
        Sheet(file.get(),
              std::max(2, static_cast<int>(std::sqrt(static_cast<double>(bytes) / bytesPerVertex))))
            .write();
}

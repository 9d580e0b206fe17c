// SPDX-License-Identifier: MIT
// X text files from the disk cache to filled mesh data, the memory they take, and generated spheres.
#include <bench/MeshPeers.h>
#include <bench/RatioTable.h>
#include <bench/XFileGenerator.h>
#include <bench/XFileScanner.h>

#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>
#include <VX_OpenGL64/meshes/shapes/VX_GLGeometrySphere.h>

#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using vx::bench::MeshLoad;
using vx::bench::None;
using vx::bench::Reading;
using vx::bench::Work;

/// A generated file, there from its first use to the end of the process.
class XFile {
public:
    explicit XFile(int megabytes) : m_Megabytes(megabytes) {}
    ~XFile() {
        if (!m_Path.empty())
            std::filesystem::remove(m_Path);
    }
    const std::string& path() {
        if (m_Path.empty()) {
            m_Path = std::filesystem::temp_directory_path() /
                     ("vx_bench_" + std::to_string(getpid()) + "_" + std::to_string(m_Megabytes) + ".x");
            generateXFile(m_Path, static_cast<std::size_t>(m_Megabytes) * 1000000);
        }
        return m_Path;
    }

private:
    int m_Megabytes;
    std::string m_Path;
};

XFile files[] = {XFile(1), XFile(10), XFile(60)};

int loadHere(const std::string& path) {
    VX_GLMeshXLoader loader;
    return loader.Load(path.c_str()) ? loader.m_Meshes[0]->m_Vertex->m_Count : 0;
}

int scan(const std::string& path) {
    return static_cast<int>(scanXFile(path).positions.size() / 3);
}

int scanByGetc(const std::string& path) {
    return static_cast<int>(scanXFileByGetc(path).positions.size() / 3);
}

Work timed(MeshLoad load, XFile& file) {
    return [load = std::move(load), &file](benchmark::State& state) {
        const int vertices = scan(file.path());
        for (auto _ : state) {
            // Some readers split a mesh and have a few more.
            if (load(file.path()) < vertices)
                return state.SkipWithError("the mesh is not whole");
        }
    };
}

bool addLoadingRow(const char* name, XFile& file) {
    vx::bench::Row row{
        .name = name, .limit = timed(scan, file), .ours = timed(loadHere, file), .must = 0.90, .aim = 0.50};
    for (auto& [peer, load] : vx::bench::meshPeers())
        row.peers.emplace_back(peer, timed(load, file));
    row.peers.emplace_back("strtod by getc", timed(scanByGetc, file));
    return vx::bench::addRow(std::move(row));
}

/// A line of /proc/self/status, in bytes.
double statusOf(const char* field) {
    std::ifstream status("/proc/self/status");
    std::string name;
    double kilobytes;
    while (status >> name) {
        if (name == field && status >> kilobytes)
            return kilobytes * 1024;
        std::getline(status, name);
    }
    return None;
}

/// The most memory that one load takes over the start, in a process of its own.
double memoryOf(const MeshLoad& load, const std::string& path) {
    int channel[2];
    if (pipe(channel) != 0)
        return None;
    const pid_t child = fork();
    if (child == 0) {
        load(""); // what is made once
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << 5; // forget the largest so far
        const double before = statusOf("VmRSS:");
        const double taken = load(path) > 0 ? statusOf("VmHWM:") - before : None;
        const bool told = write(channel[1], &taken, sizeof taken) == sizeof taken;
        _exit(told ? 0 : 1);
    }
    double taken = None;
    close(channel[1]);
    if (child < 0 || read(channel[0], &taken, sizeof taken) != sizeof taken)
        taken = None;
    close(channel[0]);
    waitpid(child, nullptr, 0);
    return taken / static_cast<double>(std::filesystem::file_size(path));
}

Reading readMemory() {
    const std::string& path = files[1].path();
    const auto orNothing = [](const MeshLoad& load) {
        return [&load](const std::string& file) { return file.empty() ? 0 : load(file); };
    };
    Reading reading;
    reading.ours = memoryOf(orNothing(loadHere), path);
    reading.limit = memoryOf(orNothing(scan), path);
    for (const auto& [peer, load] : vx::bench::meshPeers())
        reading.peers.emplace_back(peer, memoryOf(load, path));
    if (std::isnan(reading.ours))
        reading.failure = "no reading";
    return reading;
}

constexpr int Depth = 6;

void generateSphere(benchmark::State& state) {
    VX_GLGeometrySphere sphere;
    sphere.m_Subdivision = Depth;
    sphere.Generate(VX_GLVertexPNT);
    for (auto _ : state) {
        sphere.Generate(VX_GLVertexPNT);
        benchmark::ClobberMemory();
    }
}

void fillSphereBytes(benchmark::State& state) {
    VX_GLVertex vertices;
    void* block = vertices.Allocate(VX_GLVertexPNT, 60 << (2 * Depth));
    const std::size_t size = static_cast<std::size_t>(vertices.m_Stride) * vertices.m_Count;
    int value = 0;
    for (auto _ : state) {
        std::memset(block, ++value, size);
        benchmark::ClobberMemory();
    }
}

// A vertex is written where the recursion ends, and no point is brought onto the sphere.
float* writeFlat(float* out, const glm::vec3& a, const glm::vec3& b, const glm::vec3& c, int depth) {
    if (depth > 0) {
        const glm::vec3 ab = (a + b) * 0.5f, ac = (a + c) * 0.5f, bc = (b + c) * 0.5f;
        out = writeFlat(out, a, ab, ac, depth - 1);
        out = writeFlat(out, b, bc, ab, depth - 1);
        out = writeFlat(out, c, ac, bc, depth - 1);
        return writeFlat(out, ab, bc, ac, depth - 1);
    }
    for (const glm::vec3* p : {&c, &b, &a}) {
        const float vertex[] = {p->x * 0.5f, p->y * 0.5f, p->z * 0.5f, p->x, p->y, p->z, p->x, p->y};
        std::memcpy(out, vertex, sizeof vertex);
        out += 8;
    }
    return out;
}

void generateFlat(benchmark::State& state) {
    VX_GLVertex vertices;
    auto* block = static_cast<float*>(vertices.Allocate(VX_GLVertexPNT, 60 << (2 * Depth)));
    for (auto _ : state) {
        float* out = block;
        for (const auto& triangle : VX_GLGeometrySphere::tindices) {
            const float *a = VX_GLGeometrySphere::vdata[triangle[0]],
                        *b = VX_GLGeometrySphere::vdata[triangle[1]],
                        *c = VX_GLGeometrySphere::vdata[triangle[2]];
            out = writeFlat(out, {a[0], a[1], a[2]}, {b[0], b[1], b[2]}, {c[0], c[1], c[2]}, Depth);
        }
        benchmark::ClobberMemory();
    }
}

const bool registered = addLoadingRow("X text mesh, 1 MB", files[0]) &&
                        addLoadingRow("X text mesh, 10 MB", files[1]) &&
                        addLoadingRow("X text mesh, 60 MB", files[2]) &&
                        vx::bench::addReading({.name = "X text mesh, 10 MB: memory",
                                               .unit = "x file",
                                               .read = readMemory,
                                               .must = 0.9,
                                               .aim = 0.7}) &&
                        vx::bench::addRow({.name = "icosahedron sphere, depth 6",
                                           .limit = fillSphereBytes,
                                           .ours = generateSphere,
                                           .peers = {{"recursion without normalising", generateFlat}},
                                           .must = 5,
                                           .aim = 3.5});

} // namespace

// SPDX-License-Identifier: MIT
// Loads any bytes as an X text file and does with the mesh what a host does.
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace {

/// A file in memory with the given bytes; its path stays the same.
const char* fileOf(const std::uint8_t* data, std::size_t size) {
    static const int descriptor = memfd_create("x_loader", 0);
    static const std::string path = "/proc/self/fd/" + std::to_string(descriptor);
    if (ftruncate(descriptor, 0) != 0 || pwrite(descriptor, data, size, 0) != static_cast<ssize_t>(size))
        std::abort();
    return path.c_str();
}

void expect(bool condition) {
    if (!condition)
        std::abort();
}

/// The same bytes through the lexer, a character at a time and a number at a time.
void readNumbers(const char* path, bool asIntegers) {
    VX_SystemSimpleLex lexer(std::fopen(path, "r"));
    while (!lexer.isEOF()) {
        if (asIntegers)
            lexer.getInt(',');
        else
            lexer.getDouble(';');
        lexer.get();
    }
}

} // namespace

// Nothing is logged with diagnostics off.
void NSLog(const char*, ...) {}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const char* path = fileOf(data, size);
    VX_GLMeshXLoader loader;
    if (loader.Load(path)) {
        const VX_GLMeshData& mesh = *loader.m_Meshes[0];
        expect(mesh.m_Vertex->m_Count == static_cast<int>(loader.m_Positions.size()));
        expect(loader.m_Positions.size() <= size + loader.Report().missingEntries);
        expect(loader.m_FaceIndices.size() <= 4 * size && loader.Triangulate() >= 0);
        glm::tvec2<float> offset{-1, -1}, scale{0.5f, 0.5f};
        loader.makeNormalVector(0);
        loader.makeTextureUVFromNorm(offset, scale, 0);
        loader.calcRaiusCenter(0);
        loader.shiftToCenterScale(1.0f, 0);
        VX_GLMeshData copy(loader.m_Meshes[0]);
        copy.CalculateNormalTangent();
    }
    expect(loader.Load(path) ==
           (loader.m_Lexer == nullptr && loader.m_Positions.size() <= loader.m_Normals.size()));
    readNumbers(path, size % 2 == 0);
    return 0;
}

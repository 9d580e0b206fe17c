// SPDX-License-Identifier: MIT
// Loads any bytes as an X text file and does with the mesh what a host does.
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <tests/fuzz/MemoryFile.h>

using vx::fuzz::expect;

namespace {

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
    static vx::fuzz::MemoryFile file("x_loader");
    const char* path = file.fill(data, size);
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

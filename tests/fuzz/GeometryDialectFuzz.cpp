// SPDX-License-Identifier: MIT
// Adapts any bytes as a geometry shader's text. No line of it may be lost, and none added to it.
#include <VX_OpenGL64/shaders/private/GeometryDialect.h>
#include <tests/fuzz/MemoryFile.h>

#include <epoxy/gl.h>

using vx::fuzz::expect;

static std::string lineEnds(std::string text) {
    std::erase_if(text, [](char c) { return c != '\n' && c != '\r'; });
    return text;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const bool isOwn = vx::hasOwnLayout(text);
    const vx::GeometryLayout layout{size % 2 ? GL_POINTS : GL_TRIANGLES_ADJACENCY, GL_LINE_STRIP, 7};
    const std::string adapted = vx::adaptGeometryShader(text, layout, size % 3 ? 330 : 150);
    expect((adapted == text) == isOwn && vx::hasOwnLayout(adapted));
    expect(lineEnds(adapted).ends_with(lineEnds(text)));
    for (const std::string& draft : vx::geometryShaderDrafts(text, 150))
        expect(!isOwn ? lineEnds(draft).ends_with(lineEnds(text)) : draft == text);
    return 0;
}

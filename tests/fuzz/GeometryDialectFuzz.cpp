// SPDX-License-Identifier: MIT
// Adapts any bytes as a geometry shader's text, in each of the ways that there are.
#include <VX_OpenGL64/shaders/private/GeometryDialect.h>
#include <tests/fuzz/MemoryFile.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <iterator>

using vx::fuzz::expect;

namespace {

/// They tell that none of the host's lines is lost and none is added to them.
std::string lineEnds(std::string_view text) {
    std::string ends;
    std::copy_if(text.begin(), text.end(), std::back_inserter(ends),
                 [](char c) { return c == '\n' || c == '\r'; });
    return ends;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const bool isOwn = vx::hasOwnLayout(text);
    const vx::GeometryLayout layout{size % 2 ? GL_POINTS : GL_TRIANGLES_ADJACENCY, GL_LINE_STRIP, 7};
    expect(vx::layoutFault(layout).empty());
    const std::string adapted = vx::adaptGeometryShader(text, layout);
    expect((adapted == text) == isOwn && vx::hasOwnLayout(adapted));
    expect(lineEnds(adapted).ends_with(lineEnds(text)));
    std::size_t whole = 0;
    for (const std::string& draft : vx::geometryShaderDrafts(text)) {
        expect(lineEnds(draft).ends_with(lineEnds(text)));
        whole += draft == text;
    }
    expect(whole <= 1 && whole >= isOwn);
    return 0;
}

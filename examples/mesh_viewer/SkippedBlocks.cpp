// SPDX-License-Identifier: MIT
#include <examples/mesh_viewer/SkippedBlocks.h>

#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>

#include <cstdio>
#include <map>

namespace {

std::string nameOf(int code) {
    for (const VX_GLMeshXTemplate& known : Templates) {
        if (known.code == code)
            return known.keyword;
    }
    return "other";
}

int codeOf(const char* keyword) {
    for (const VX_GLMeshXTemplate& known : Templates) {
        if (known.keyword == std::string(keyword))
            return known.code;
    }
    return VX_GLMeshXLoader::UnknownWord;
}

/// Walks through the file as `Load` does, with the loader's own operations, and counts.
std::map<std::string, int> countBlocks(VX_GLMeshXLoader& loader) {
    const int frame = codeOf("Frame"), animations = codeOf("AnimationSet"), mesh = codeOf("Mesh");
    std::map<std::string, int> counts;
    bool isCounted = false; // by its keyword, which stands before the word or the brace that skips it
    while (!loader.m_Lexer->isEOF()) {
        const int code = loader.processBlock();
        if (code == VX_GLMeshXLoader::NothingHere || code == VX_GLMeshXLoader::ClosingBrace)
            continue;
        if (code == VX_GLMeshXLoader::Misplaced)
            break;
        if (code == frame || code == animations) {
            ++counts[nameOf(code)];
            isCounted = true;
        } else if (code == mesh) {
            loader.processMesh();
        } else {
            if (!isCounted)
                ++counts[nameOf(code)];
            isCounted = false;
            loader.avoidTemplate();
        }
    }
    return counts;
}

} // namespace

std::string skippedBlocks(const char* path) {
    VX_GLMeshXLoader loader;
    FILE* file = std::fopen(path, "r");
    if (!file)
        return "nothing";
    loader.m_Lexer = new VX_SystemSimpleLex(file);
    char header[16];
    loader.m_Lexer->read(sizeof header, header);
    std::string list;
    for (const auto& [name, count] : countBlocks(loader))
        list += (list.empty() ? "" : ", ") + std::to_string(count) + " " + name;
    return list.empty() ? "nothing" : list;
}

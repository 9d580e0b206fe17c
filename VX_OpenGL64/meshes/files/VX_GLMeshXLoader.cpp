// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>

#include <VX_OpenGL64/meshes/files/private/XKeyword.h>
#include <VX_OpenGL64/meshes/private/VertexLayout.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <VX_Platform/Foundation/private/RegularFile.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace {

using namespace vx::xkeyword;

constexpr int kOpeningBrace = '{';

} // namespace

const VX_GLMeshXTemplate Templates[15] = {
    {"template", Template},
    {"FrameTransformMatrix", FrameTransformMatrix},
    {"Frame", Frame},
    {"XSkinMeshHeader", XSkinMeshHeader},
    {"MeshTextureCoords", MeshTextureCoords},
    {"MeshMaterialList", MeshMaterialList},
    {"MeshNormals", MeshNormals},
    {"Mesh", Mesh},
    {"Material", Material},
    {"SkinWeights", SkinWeights},
    {"TextureFilename", TextureFilename},
    {"AnimationSet", AnimationSet},
    {"AnimationKey", AnimationKey},
    {"Animation", Animation},
    {"Header", Header},
};

std::string VX_GLMeshXReport::text() const {
    std::string text = failure;
    const auto add = [&text](std::size_t count, const std::string& what, const char* behind) {
        if (count > 0)
            text += (text.empty() ? "" : behind) + std::to_string(count) + " " + what;
    };
    const char* separator = "; ";
    for (const auto& [word, count] : skipped) {
        add(static_cast<std::size_t>(count), word, separator);
        separator = ", ";
    }
    text += skipped.empty() ? "" : " skipped";
    if (oddFace >= 0)
        text += (text.empty() ? "" : "; ") + ("faces misread from one of " + std::to_string(oddFace)) +
                " corners on";
    add(missingEntries, "entries missing at the file's end", "; ");
    return text;
}

VX_GLMeshXLoader::VX_GLMeshXLoader() {
    m_Meshes.reserve(1);
    m_Meshes.push_back(new VX_GLMeshData);
}

VX_GLMeshXLoader::~VX_GLMeshXLoader() = default;

bool VX_GLMeshXLoader::Load(const char* path) {
    m_Report = {};
    const bool success = read(path);
    if (const std::string told = m_Report.text(); VX_GetDiagnostics() && !told.empty())
        NSLog("VX_GLMeshXLoader::Load: %s: %s", path ? path : "(null)", told.c_str());
    return success;
}

bool VX_GLMeshXLoader::fail(const std::string& reason) {
    m_Report.failure = reason;
    return false;
}

bool VX_GLMeshXLoader::read(const char* path) {
    m_FaceCount = 0;
    m_HasQuads = false;
    m_Positions.clear();
    m_Normals.clear();
    m_UVs.clear();
    m_FaceIndices.clear();
    m_FaceSizes.clear();
    m_CornersOfVertex.clear();
    m_MatchedCorners = 0;
    close();
    std::uint64_t size = 0;
    std::string why;
    vx::FileHandle file = vx::openRegularFile(path, size, why);
    if (!file)
        return fail(why);
    VX_GLMeshBaseLoader::close(); // an override may have left one
    m_Lexer = new VX_SystemSimpleLex(file.release());
    if (!readHeader() || !readBlocks())
        return false; // and the file stays open until the next use
    delete m_Lexer;
    m_Lexer = nullptr;
    if (m_Positions.size() > m_Normals.size())
        return fail(std::to_string(m_Positions.size()) + " positions and " +
                    std::to_string(m_Normals.size()) + " normals: no MeshNormals block was read to its end");
    return fillMesh();
}

bool VX_GLMeshXLoader::readHeader() {
    char header[16] = {};
    m_Lexer->read(sizeof header, header);
    if (std::memcmp(header, "xof 030", 7) == 0 && (header[7] == '2' || header[7] == '3') &&
        std::memcmp(header + 8, "txt ", 4) == 0)
        return true;
    return fail(std::memcmp(header, "xof ", 4) == 0
                    ? "it does not begin with \"xof 0302txt \" or \"xof 0303txt \": another kind of X file"
                    : "it does not begin with \"xof 0302txt \" or \"xof 0303txt \"");
}

bool VX_GLMeshXLoader::readBlocks() {
    std::string keyword; // of the block that begins behind its name
    while (!m_Lexer->isEOF()) {
        switch (processBlock()) {
            case Frame:
            case AnimationSet:
                // The blocks of these two keywords are not opened: the name or the brace behind them makes
                // the next round skip the whole body (docs/kept-behaviour.md).
                keyword = m_Word;
                break;
            case NothingHere:
            case ClosingBrace:
                break;
            case Mesh:
                processMesh();
                keyword.clear();
                break;
            case Misplaced:
                return fail("a \"/\" at the top level that begins no comment");
            default:
                if (!keyword.empty())
                    m_Word = std::exchange(keyword, {});
                skipBlock();
        }
    }
    return true;
}

void VX_GLMeshXLoader::skipBlock() {
    constexpr std::size_t longest = 64;
    ++m_Report.skipped[m_Word.substr(0, longest)];
    avoidTemplate();
}

bool VX_GLMeshXLoader::fillMesh() {
    constexpr std::size_t most = std::numeric_limits<int>::max();
    // Twice the length, though quads need one and a half: docs/kept-behaviour.md.
    const std::size_t indexCount = m_FaceIndices.size() * (m_HasQuads ? 2 : 1);
    if (m_Meshes.empty() || !m_Meshes[0])
        return fail("the loader has no mesh to fill");
    if (m_Positions.size() > most || indexCount > most)
        return fail("more vertices or indices than a mesh can hold");
    VX_GLMeshData& mesh = *m_Meshes[0];
    if (!mesh.AllocateVertex(VX_GLVertexPNT, static_cast<int>(m_Positions.size())) && !m_Positions.empty())
        return fail("more vertices than a mesh can hold");
    mesh.AllocateIndex(static_cast<int>(indexCount));
    writeVertices(mesh);
    writeIndices(mesh);
    return true;
}

void VX_GLMeshXLoader::writeVertices(VX_GLMeshData& mesh) {
    const bool hasUVs = m_UVs.size() == m_Positions.size();
    auto* vertex = static_cast<char*>(mesh.m_Vertex->m_Data);
    const vx::VertexLayout& layout = *vx::vertexLayout(VX_GLVertexPNT);
    for (std::size_t i = 0; i < m_Positions.size(); ++i) {
        const glm::tvec2<float> uv = hasUVs ? m_UVs[i] : glm::tvec2<float>(0.0f);
        std::memcpy(vertex, &m_Positions[i], sizeof m_Positions[i]);
        std::memcpy(vertex + layout.normal, &m_Normals[i], sizeof m_Normals[i]);
        std::memcpy(vertex + layout.uv, &uv, sizeof uv);
        vertex += layout.stride;
    }
}

void VX_GLMeshXLoader::writeIndices(VX_GLMeshData& mesh) {
    if (!m_HasQuads) {
        std::copy(m_FaceIndices.begin(), m_FaceIndices.end(), mesh.m_Index);
        return;
    }
    unsigned int* out = mesh.m_Index;
    for (std::size_t i = 0; i + 4 <= m_FaceIndices.size(); i += 4) {
        const unsigned int* quad = &m_FaceIndices[i];
        for (int corner : {0, 1, 2, 2, 3, 0})
            *out++ = quad[corner];
    }
    // Nothing belongs there, but it counts as indices and a host will draw it.
    std::fill(out, mesh.m_Index + mesh.m_IndexCount, 0u);
}

int VX_GLMeshXLoader::Triangulate() {
    if (m_Meshes.empty() || !m_Meshes[0] || !m_Meshes[0]->m_Vertex || !m_Report.failure.empty())
        return -1;
    std::vector<unsigned int> indices;
    indices.reserve(m_FaceIndices.size() / 2 * 3);
    int leftOut = 0;
    const unsigned int* face = m_FaceIndices.data();
    const auto isInside = [this](unsigned int index) { return index < m_Positions.size(); };
    for (const unsigned char size : m_FaceSizes) {
        const unsigned int corners[] = {face[0], face[1], face[2], face[2], face[size - 1], face[0]};
        for (int first = 0; first < (size == 4 ? 6 : 3); first += 3) {
            if (std::all_of(corners + first, corners + first + 3, isInside))
                indices.insert(indices.end(), corners + first, corners + first + 3);
            else
                ++leftOut;
        }
        face += size;
    }
    std::copy(indices.begin(), indices.end(), m_Meshes[0]->AllocateIndex(static_cast<int>(indices.size())));
    return leftOut;
}

int VX_GLMeshXLoader::blockID(std::string* word) {
    if (!m_Lexer || m_Lexer->isEOF())
        return NothingHere;
    if (word->empty())
        return Misplaced;
    for (const VX_GLMeshXTemplate& known : Templates) {
        if (*word == known.keyword) {
            m_Lexer->skipWhiteSpace();
            return known.code;
        }
    }
    return UnknownWord;
}

int VX_GLMeshXLoader::processBlock() {
    if (!m_Lexer)
        return NothingHere;
    switch (m_Lexer->peek()) {
        case '\t':
        case '\n':
        case ' ':
            m_Lexer->get();
            return NothingHere;
        case '#':
            m_Lexer->find('\n');
            return NothingHere;
        case '/':
            m_Lexer->get();
            if (m_Lexer->peek() != '/')
                return Misplaced;
            m_Lexer->find('\n');
            return NothingHere;
        case '{':
            m_Word = "{";
            return OpeningBrace;
        case '}':
            m_Lexer->get();
            return ClosingBrace;
        default:
            getStringKakko(m_Word);
            return blockID(&m_Word);
    }
}

void VX_GLMeshXLoader::avoidTemplate() {
    if (!m_Lexer)
        return;
    m_Lexer->find('{');
    constexpr int braces[] = {'{', '}'};
    for (std::size_t depth = 1; depth > 0;) {
        switch (m_Lexer->findAny(2, braces)) {
            case '{':
                ++depth;
                break;
            case '}':
                // What stands right behind an inner block goes with it, and that is part of the format as it
                // is read here.
                if (--depth > 0)
                    m_Lexer->get();
                break;
            default:
                return;
        }
    }
}

void VX_GLMeshXLoader::getStringKakko(std::string& out) {
    if (m_Lexer)
        m_Lexer->getStringWhiteToken(out, 1, &kOpeningBrace);
}

void VX_GLMeshXLoader::getLineWhileTerminate(std::string& out, int terminator) {
    if (m_Lexer)
        m_Lexer->getStringOnlyToken(out, 1, &terminator);
}

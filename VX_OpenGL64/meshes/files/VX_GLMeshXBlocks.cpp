// SPDX-License-Identifier: MIT
// The block readers of VX_GLMeshXLoader.
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>

#include <VX_OpenGL64/meshes/files/private/XKeyword.h>
#include <VX_System/private/LexCursor.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

using namespace vx::xkeyword;

using Vec3 = glm::tvec3<float>;

[[gnu::always_inline]] inline float nextFloat(vx::LexCursor& cursor) {
    return static_cast<float>(cursor.getDouble<';'>());
}

[[gnu::always_inline]] inline Vec3 nextVector(vx::LexCursor& cursor) {
    const float x = nextFloat(cursor);
    const float y = nextFloat(cursor);
    const float z = nextFloat(cursor);
    cursor.get(); // the separator
    return {x, y, z};
}

[[gnu::always_inline]] inline unsigned int nextIndex(vx::LexCursor& cursor, bool isLast) {
    return static_cast<unsigned int>(isLast ? cursor.getInt<';'>() : cursor.getInt<','>());
}

/// Makes room for `count` more entries, but for no more than the rest of the file can fill.
template <class Entry>
void reserveFor(std::vector<Entry>& entries, std::int64_t count, std::size_t bytesLeft,
                std::size_t bytesEach) {
    const auto possible = static_cast<std::int64_t>(bytesLeft / bytesEach);
    const std::size_t wanted =
        entries.size() + static_cast<std::size_t>(std::clamp<std::int64_t>(count, 0, possible));
    if (wanted > entries.capacity())
        entries.reserve(std::max(wanted, 2 * entries.capacity()));
}

constexpr std::size_t kShortestVector = sizeof(";;;,") - 1;
constexpr std::size_t kShortestUV = sizeof(";;,") - 1;
constexpr std::size_t kShortestIndex = sizeof(",") - 1;
constexpr std::size_t kShortestFace = sizeof("3;,,;,") - 1;

/// Appends the zeros that stand for entries behind the file's end, and returns how many were missing. A count
/// from the file is trusted only so far.
template <class Entry>
std::size_t addMissing(std::vector<Entry>& entries, int missing) {
    constexpr int kMost = 16'000'000;
    if (missing > 0)
        entries.resize(entries.size() + static_cast<std::size_t>(std::min(missing, kMost)), Entry(0.0f));
    return static_cast<std::size_t>(std::max(missing, 0));
}

std::size_t readVectors(VX_SystemSimpleLex& lexer, int count, std::vector<Vec3>& vectors) {
    reserveFor(vectors, count, lexer.bytesLeft(), kShortestVector);
    vx::LexCursor cursor(lexer);
    int i = 0;
    for (; i < count && !cursor.isEOF(); ++i)
        vectors.push_back(nextVector(cursor));
    return addMissing(vectors, count - i);
}

std::size_t readUVs(VX_SystemSimpleLex& lexer, int count, std::vector<glm::tvec2<float>>& uvs) {
    reserveFor(uvs, count, lexer.bytesLeft(), kShortestUV);
    vx::LexCursor cursor(lexer);
    int i = 0;
    for (; i < count && !cursor.isEOF(); ++i) {
        const float u = nextFloat(cursor);
        const float v = nextFloat(cursor);
        uvs.push_back({u, v});
        cursor.get();
    }
    return addMissing(uvs, count - i);
}

} // namespace

void VX_GLMeshXLoader::processMesh() {
    if (!m_Lexer)
        return;
    if (m_Lexer->peek() != '{') {
        std::string name;
        getStringKakko(name);
    }
    m_Lexer->find('{');
    readPositions();
    readFaces();
    while (!m_Lexer->isEOF()) {
        switch (processBlock()) {
            case ClosingBrace:
                return;
            case NothingHere:
                break;
            case MeshTextureCoords:
                processMeshTextureCoords();
                break;
            case MeshMaterialList:
                ++m_Report.skipped[m_Word];
                processMeshMaterials();
                break;
            case SkinWeights:
                ++m_Report.skipped[m_Word];
                processSkinWeights();
                break;
            case MeshNormals:
                processMeshNormals();
                break;
            default:
                skipBlock();
        }
    }
}

void VX_GLMeshXLoader::readPositions() {
    const int count = m_Lexer->getInt(';');
    m_Report.missingEntries += readVectors(*m_Lexer, count, m_Positions);
}

void VX_GLMeshXLoader::readFaces() {
    m_FaceCount = m_Lexer->getInt(';');
    const std::size_t bytesLeft = m_Lexer->bytesLeft();
    vx::LexCursor cursor(*m_Lexer);
    int i = 0;
    for (; i < m_FaceCount && !cursor.isEOF(); ++i) {
        const int corners = cursor.getInt<';'>();
        // Of other faces the indices stay unread and are taken for faces: docs/kept-behaviour.md.
        if (corners == 3 || corners == 4) {
            if (i == 0) {
                reserveFor(m_FaceIndices, std::int64_t{corners} * m_FaceCount, bytesLeft, kShortestIndex);
                reserveFor(m_FaceSizes, m_FaceCount, bytesLeft, kShortestFace);
            }
            m_FaceSizes.push_back(static_cast<unsigned char>(corners));
            for (int corner = 1; corner <= corners; ++corner)
                m_FaceIndices.push_back(nextIndex(cursor, corner == corners));
            m_HasQuads = m_HasQuads || corners == 4;
        } else if (m_Report.oddFace < 0) {
            m_Report.oddFace = std::max(corners, 0);
        }
        cursor.get();
    }
    m_Report.missingEntries += static_cast<std::size_t>(std::max(m_FaceCount - i, 0));
}

void VX_GLMeshXLoader::processMeshNormals() {
    if (!m_Lexer)
        return;
    m_Lexer->find('{');
    const int count = m_Lexer->getInt(';');
    std::vector<Vec3> normals;
    m_Report.missingEntries += readVectors(*m_Lexer, count, normals);
    addNormals(normals);
    m_Lexer->find('}');
}

/// Reads the faces of the normals and adds, corner by corner, the normal that they name to the vertex that
/// the mesh's faces name at the same place of their list; then divides by the number of corners.
void VX_GLMeshXLoader::addNormals(const std::vector<Vec3>& normals) {
    forgetNormals();
    vx::LexCursor cursor(*m_Lexer);
    const int faces = cursor.getInt<';'>();
    for (int i = 0; i < faces && !cursor.isEOF(); ++i) {
        const int size = cursor.getInt<';'>();
        for (int corner = 1; corner <= size; ++corner) {
            const unsigned int normal = nextIndex(cursor, corner == size);
            if (m_MatchedCorners == m_FaceIndices.size()) {
                if (cursor.isEOF())
                    break;
                continue;
            }
            const unsigned int vertex = m_FaceIndices[m_MatchedCorners++];
            if (vertex >= m_Normals.size() || normal >= normals.size())
                continue;
            if (m_CornersOfVertex[vertex]++ == 0)
                m_Normals[vertex] = Vec3(0.0f);
            m_Normals[vertex] += normals[normal];
        }
        cursor.get();
    }
    // By the vertices or by the corners, whichever are fewer.
    const bool byVertex = m_Normals.size() <= m_MatchedCorners;
    for (std::size_t i = 0; i < (byVertex ? m_Normals.size() : m_MatchedCorners); ++i)
        divideNormal(byVertex ? static_cast<unsigned int>(i) : m_FaceIndices[i]);
}

/// One normal for each position, and none of them known: not a number, as for a vertex without faces. Only
/// those of the last block have to be taken back, so that many small blocks do not cost many large lists.
void VX_GLMeshXLoader::forgetNormals() {
    const Vec3 unknown(std::numeric_limits<float>::quiet_NaN());
    for (std::size_t corner = 0; corner < std::min(m_MatchedCorners, m_FaceIndices.size()); ++corner) {
        if (m_FaceIndices[corner] < m_Normals.size())
            m_Normals[m_FaceIndices[corner]] = unknown;
    }
    m_MatchedCorners = 0;
    m_Normals.resize(m_Positions.size(), unknown);
    m_CornersOfVertex.resize(m_Positions.size(), 0u);
}

void VX_GLMeshXLoader::divideNormal(unsigned int vertex) {
    if (vertex >= m_Normals.size() || m_CornersOfVertex[vertex] == 0)
        return;
    m_Normals[vertex] /= static_cast<float>(m_CornersOfVertex[vertex]);
    m_CornersOfVertex[vertex] = 0;
}

void VX_GLMeshXLoader::processMeshTextureCoords() {
    if (!m_Lexer)
        return;
    m_Lexer->find('{');
    const int count = m_Lexer->getInt(';');
    m_Report.missingEntries += readUVs(*m_Lexer, count, m_UVs);
    m_Lexer->find('}');
}

void VX_GLMeshXLoader::skipTokens(int count, int terminator) {
    for (int i = 0; i < count && !m_Lexer->isEOF(); ++i)
        m_Lexer->find(terminator);
}

void VX_GLMeshXLoader::processMeshMaterials() {
    if (!m_Lexer)
        return;
    m_Lexer->find('{');
    skipTokens(2, ';');
    // By the mesh's own face count, whatever the block says.
    skipTokens(m_FaceCount - (m_FaceCount > 0), ',');
    skipTokens(1, ';');
    m_Lexer->get();
    while (!m_Lexer->isEOF()) {
        switch (processBlock()) {
            case ClosingBrace:
                return;
            case NothingHere:
                break;
            case Material:
                processMaterial();
                break;
            default:
                avoidTemplate();
        }
    }
}

void VX_GLMeshXLoader::processMaterial() {
    if (!m_Lexer)
        return;
    m_Lexer->find('{');
    skipTokens(4, ';'); // colour
    m_Lexer->get();
    skipTokens(1, ';'); // power
    skipTokens(3, ';'); // specular
    m_Lexer->get();
    skipTokens(3, ';'); // emissive
    m_Lexer->get();
    while (!m_Lexer->isEOF()) {
        switch (processBlock()) {
            case ClosingBrace:
                return;
            case NothingHere:
                break;
            case TextureFilename:
                for (int c : {'{', '"', '"', '}'})
                    m_Lexer->find(c);
                break;
            default:
                avoidTemplate();
        }
    }
}

void VX_GLMeshXLoader::processSkinWeights() {
    if (!m_Lexer)
        return;
    for (int c : {'{', '"', '}'})
        m_Lexer->find(c);
}

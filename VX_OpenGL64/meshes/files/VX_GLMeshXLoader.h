// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/meshes/files/VX_GLMeshBaseLoader.h>

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// A keyword of X text files and the code that stands for it.
struct VX_GLMeshXTemplate {
    /// As it stands in the file, and the number that the loader knows it by.
    const char* keyword;
    int code;
};

/// The 15 keywords; compared exactly, upper and lower case told apart.
extern VX_EXPORT const VX_GLMeshXTemplate Templates[15];

/// What a load came upon besides its mesh.
struct VX_EXPORT VX_GLMeshXReport {
    /// Why it returned false; empty when it did not.
    std::string failure;
    /// How many blocks of which keyword or word were passed by; "{" for those without one.
    std::map<std::string, int> skipped;
    /// Corners of the first face that has neither three nor four, whose indices were taken for more faces; -1
    /// when there is none.
    int oddFace = -1;
    /// Entries of lists that were to come when the file ended, and were read as zeros.
    std::size_t missingEntries = 0;

    /// All of it in words, as in "1 Frame and 2 template skipped, 3 entries missing"; empty where there is
    /// nothing to tell.
    std::string text() const;
};

/// Reads the geometry of one mesh from an X text file ("xof 0302txt " or "xof 0303txt ") into a mesh of
/// format `VX_GLVertexPNT`: positions, normals and texture coordinates of the "Mesh" blocks at the top level.
/// Everything else is skipped, also a "Mesh" inside a "Frame". Numbers are read as `atoi` and `atof` do in
/// the C locale. One thread at a time, no GL; it blocks its caller while it reads.
///
/// The operations behind `Load` read parts of an open file and leave the lexer behind what they read; they
/// need `m_Lexer` and do nothing without it. A file that ends inside a block ends the loops of that block; a
/// list of positions, normals or texture coordinates that it cuts off keeps its count, up to 16 million, with
/// zeros for what is missing.
class VX_EXPORT VX_GLMeshXLoader : public VX_GLMeshBaseLoader {
public:
    /// What `blockID` and `processBlock` return besides the codes of `Templates`.
    enum BlockCode : int {
        OpeningBrace = 10, ///< an opening brace is next, unread
        ClosingBrace = 11, ///< a closing brace was read
        NothingHere = 254, ///< white space, a comment or the end of the file
        UnknownWord = 255,
        Misplaced = -1 ///< an empty word, or a "/" that does not begin a comment
    };

    /// Has one empty mesh, which `Load` fills.
    VX_GLMeshXLoader();
    ~VX_GLMeshXLoader() override;

    /// Reads the file at `path` into `m_Meshes[0]`, whose block is reused if it is large enough; its vertex
    /// count then stays the larger one.
    ///
    /// Quads become two triangles each (0, 1, 2 and 2, 3, 0). Once a file has one quad its whole index list
    /// is taken as quads, which scrambles a file that mixes quads with triangles (`Triangulate` mends it),
    /// and the mesh's list has twice the length of the file's, of which the last quarter is zeros. Indices
    /// stand as the file gives them, also those outside the positions. The normal of a vertex is the mean of
    /// its corners' normals, not normalised, and not a number where no face uses it. Texture coordinates
    /// stand as read, and are (0, 0) unless there is exactly one for each position.
    ///
    /// Returns false, with the mesh as it was, for a file that cannot be opened, another header, a "/" at the
    /// top level that begins no comment, and fewer normals than positions (so without "MeshNormals"). Returns
    /// false with an empty mesh when there are more vertices or indices than a mesh can hold. Throws
    /// `std::bad_alloc` when memory runs out, which is never taken for more than the file can fill and 16
    /// million entries. Logs nothing, unless diagnostics are on; `Report` tells why it failed.
    bool Load(const char* path);
    /// What the last `Load` came upon; borrowed, changed by the next one.
    const VX_GLMeshXReport& Report() const { return m_Report; }
    /// Gives the mesh that was loaded the triangles of its faces in the order of the file, each by its own
    /// number of corners: (0, 1, 2), and for a quad (2, 3, 0) behind it, and nothing behind the last one.
    /// Triangles that name vertices that are not there are left out. Returns how many were; -1, with nothing
    /// changed, without a loaded mesh.
    int Triangulate();

    /// Code of a word at which a block may begin; behind a keyword white space is skipped.
    int blockID(std::string* word);
    /// Reads on to the next thing of interest and returns its code.
    int processBlock();
    /// Skips one block with all the blocks inside it. One more character goes with each inner block, so that
    /// an outer block that closes directly behind an inner one ends at the next closing brace.
    void avoidTemplate();
    /// `getStringWhiteToken` of the lexer up to an opening brace.
    void getStringKakko(std::string& out);
    /// `getStringOnlyToken` of the lexer with one terminator.
    void getLineWhileTerminate(std::string& out, int terminator);

    /// One reader for each kind of block, from behind its keyword to behind its closing brace.
    void processMesh();
    void processMeshNormals();
    void processMeshTextureCoords();
    void processMaterial();
    void processMeshMaterials();
    void processSkinWeights();

    /// What the last `Load` read.
    std::vector<glm::tvec3<float>> m_Positions;
    /// One normal for each position.
    std::vector<glm::tvec3<float>> m_Normals;
    /// Texture coordinates, one for each position or none at all.
    std::vector<glm::tvec2<float>> m_UVs;
    /// The indices of all faces as they stand in the file, three or four for each.
    std::vector<unsigned int> m_FaceIndices;
    /// Face count of the last "Mesh" block.
    int m_FaceCount = 0;
    /// A face with four corners was read.
    bool m_HasQuads = false;

    /// The corners of each face in `m_FaceIndices`, three or four.
    std::vector<unsigned char> m_FaceSizes;

private:
    bool read(const char* path);
    bool readHeader();
    bool readBlocks();
    bool fail(const std::string& reason);
    void skipBlock();
    bool fillMesh();
    void writeVertices(VX_GLMeshData& mesh);
    void writeIndices(VX_GLMeshData& mesh);
    void readPositions();
    void readFaces();
    void addNormals(const std::vector<glm::tvec3<float>>& normals);
    void forgetNormals();
    void divideNormal(unsigned int vertex);
    void skipTokens(int count, int terminator);

    /// How many corners add to a vertex's normal; all 0 between blocks.
    std::vector<unsigned int> m_CornersOfVertex;
    /// Entries of `m_FaceIndices` that the last block of normals went through.
    std::size_t m_MatchedCorners = 0;
    /// The last word that `processBlock` came upon.
    std::string m_Word;
    VX_GLMeshXReport m_Report;
};

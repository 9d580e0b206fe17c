// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>
#include <tests/support/TemporaryFile.h>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>
#include <string>
#include <vector>

using vx::test::TemporaryFile;

namespace {

constexpr float nan = std::numeric_limits<float>::quiet_NaN();
const std::string header = "xof 0303txt 0032\n";

/// Position, normal and texture coordinate of one vertex.
using Vertex = std::vector<float>;

struct Case {
    const char* name;
    std::string text; ///< behind the header
    bool loads;
    std::vector<Vertex> vertices;
    std::vector<unsigned> indices;
};

// A triangle in the xy plane with one normal, and a quad on its side. Every list is written without the
// closing brace of the mesh.
const std::string triangle = "3;0;0;0;,1;0;0;,0;2;0;;1;3;0,1,2;;";
const std::string normalZ = "MeshNormals{1;0;0;1;;1;3;0,0,0;;}";
const std::string loadable = "Mesh{" + triangle + normalZ + "}";
const std::vector<Vertex> triangleVertices = {
    {0, 0, 0, 0, 0, 1, 0, 0}, {1, 0, 0, 0, 0, 1, 0, 0}, {0, 2, 0, 0, 0, 1, 0, 0}};
const std::vector<unsigned> triangleIndices = {0, 1, 2};
const std::string quad = "4;0;0;0;,1;0;0;,1;1;0;,0;1;0;;1;4;0,1,2,3;;";

std::vector<Vertex> withNormals(std::vector<Vertex> vertices, float x, float y, float z) {
    for (Vertex& vertex : vertices)
        vertex[3] = x, vertex[4] = y, vertex[5] = z;
    return vertices;
}

std::vector<Case> cases() {
    const std::vector<Vertex> none;
    const std::vector<unsigned> noIndices;
    const std::vector<Vertex> unlit = withNormals(triangleVertices, nan, nan, nan);
    return {
        {"triangle with texture coordinates",
         "Mesh m {" + triangle + normalZ + "MeshTextureCoords{3;0.25;.5;,1;0;,-1;2.5;;}}",
         true,
         {{0, 0, 0, 0, 0, 1, .25, .5}, {1, 0, 0, 0, 0, 1, 1, 0}, {0, 2, 0, 0, 0, 1, -1, 2.5}},
         triangleIndices},
        {"fewer texture coordinates than positions",
         "Mesh {" + triangle + normalZ + "MeshTextureCoords{2;1;1;,1;0;;}}", true, triangleVertices,
         triangleIndices},
        {"more texture coordinates than positions",
         "Mesh {" + triangle + normalZ + "MeshTextureCoords{4;1;1;,1;1;,1;1;,1;0;;}}", true, triangleVertices,
         triangleIndices},
        {"quad",
         "Mesh{" + quad + "MeshNormals{1;0;1;0;;1;4;0,0,0,0;;}}",
         true,
         {{0, 0, 0, 0, 1, 0, 0, 0},
          {1, 0, 0, 0, 1, 0, 0, 0},
          {1, 1, 0, 0, 1, 0, 0, 0},
          {0, 1, 0, 0, 1, 0, 0, 0}},
         {0, 1, 2, 2, 3, 0, 0, 0}},
        // Seven entries, 0 1 2 and 0 1 2 3: one group of four, three left over, fourteen indices.
        {"triangle before a quad",
         "Mesh{4;0;0;0;,1;0;0;,1;1;0;,0;1;0;;2;3;0,1,2;,4;0,1,2,3;;"
         "MeshNormals{1;0;1;0;;2;3;0,0,0;,4;0,0,0,0;;}}",
         true,
         {{0, 0, 0, 0, 1, 0, 0, 0},
          {1, 0, 0, 0, 1, 0, 0, 0},
          {1, 1, 0, 0, 1, 0, 0, 0},
          {0, 1, 0, 0, 1, 0, 0, 0}},
         {0, 1, 2, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
        {"pentagon: its corners are words, and the first block behind them is skipped",
         "Mesh{3;0;0;0;,1;0;0;,0;2;0;;1;5;0,1,2,3,4;;\nMeshNormals{9;}" + normalZ + "}", true, unlit,
         noIndices},
        {"no normals", "Mesh{" + triangle + "}", false, none, noIndices},
        {"normals cut off", "Mesh{" + triangle + "MeshNormals", false, none, noIndices},
        {"nothing behind the header", "", true, none, noIndices},
        // Corners of vertex 0: x and y; of vertex 1: x; vertices 2 and 3: z. Vertex 4 has no face.
        {"mean of different normals",
         "Mesh{5;0;0;0;,1;0;0;,0;2;0;,3;3;3;,4;4;4;;2;3;0,1,2;,3;0,2,3;;"
         "MeshNormals{3;1;0;0;,0;1;0;,0;0;1;;2;3;0,0,2;,3;1,2,2;;}}",
         true,
         {{0, 0, 0, .5, .5, 0, 0, 0},
          {1, 0, 0, 1, 0, 0, 0, 0},
          {0, 2, 0, 0, 0, 1, 0, 0},
          {3, 3, 3, 0, 0, 1, 0, 0},
          {4, 4, 4, nan, nan, nan, 0, 0}},
         {0, 1, 2, 0, 2, 3}},
        {"normals of a vertex that cancel out",
         "Mesh{1;7;8;9;;1;3;0,0,0;;MeshNormals{2;0;0;2;,0;0;-1;;1;3;0,1,1;;}}",
         true,
         {{7, 8, 9, 0, 0, 0, 0, 0}},
         {0, 0, 0}},
        // The list has a corner of vertex 9, which is none, and one of normal 7 or -1, which is none either.
        {"indices outside",
         "Mesh{3;0;0;0;,1;0;0;,0;2;0;;2;3;0,1,9;,3;0,0,-2;;MeshNormals{1;0;0;1;;2;3;0,7,0;,3;-1,0,0;;}}",
         true,
         {{0, 0, 0, 0, 0, 1, 0, 0}, {1, 0, 0, nan, nan, nan, 0, 0}, {0, 2, 0, nan, nan, nan, 0, 0}},
         {0, 1, 9, 0, 0, 4294967294u}},
        {"normals of more and of fewer corners than the faces have",
         "Mesh{" + triangle + "MeshNormals{1;0;0;1;;2;5;0,0,0,0,0;,2;0,0;;}}" +
             "Mesh{0;0;MeshNormals{1;0;0;1;;1;2;0,0;;}}",
         true,
         {{0, 0, 0, 0, 0, 1, 0, 0}, {1, 0, 0, 0, 0, 1, 0, 0}, {0, 2, 0, nan, nan, nan, 0, 0}},
         triangleIndices},
        // The second block's normals are matched to the first corners of the whole list.
        {"two meshes",
         loadable + "Mesh{1;5;6;7;;1;3;0,0,0;;MeshNormals{1;1;0;0;;1;3;0,0,0;;}}",
         true,
         {{0, 0, 0, 1, 0, 0, 0, 0},
          {1, 0, 0, 1, 0, 0, 0, 0},
          {0, 2, 0, 1, 0, 0, 0, 0},
          {5, 6, 7, nan, nan, nan, 0, 0}},
         {0, 1, 2, 0, 0, 0}},
        {"mesh in a frame", "Frame{" + loadable + "}", true, none, noIndices},
        {"mesh in a named frame, another behind it", "Frame Root\n{ Mesh m { 1; 9;9;9;; } }\n" + loadable,
         true, triangleVertices, triangleIndices},
        {"animation set, header, templates and unknown blocks",
         "template A { <0-1> {x} [...] }\nHeader {1;0;1;}\nAnimationSet S {Animation{{R}\n}\n}\n{Some "
         "{thing} }\n"
         "Unknown{}\n" +
             loadable,
         true, triangleVertices, triangleIndices},
        {"a block that closes right behind an inner one runs on to the next brace",
         "template A {{}}\nmore }\n" + loadable, true, triangleVertices, triangleIndices},
        {"and takes a mesh with it", "template A {{}}\n" + loadable, true, none, noIndices},
        {"comments wherever a block may start",
         "// one {\n# two }\n//\nMesh {" + triangle + "\n// {\n# }\n" + normalZ + "\n//}\n}\n//", true,
         triangleVertices, triangleIndices},
        {"a slash at the top level", loadable + "\n/", false, none, noIndices},
        {"a slash inside the mesh skips a block", "Mesh{" + triangle + "/{ }" + normalZ + "}", true,
         triangleVertices, triangleIndices},
        {"Windows line ends",
         "\r\nMesh\r\n{\r\n3;\r\n0;0;0;,\r\n1;0;0;,\r\n0;2;0;;\r\n1;\r\n3;0,1,2;;\r\nMeshNormals\r\n{\r\n1;"
         "\r\n"
         "0;0;1;;\r\n1;\r\n3;0,0,0;;\r\n}\r\n}\r\n",
         true, triangleVertices, triangleIndices},
        {"a lone return before a brace", "\r{}" + loadable, false, none, noIndices},
        {"a lone return before a word", "\r" + loadable, true, triangleVertices, triangleIndices},
        {"names with quotes, blanks and bytes of any kind",
         "Mesh \"K\xc3\xb6rper 1\"\xff\x01 {" + triangle + normalZ + "}", true, triangleVertices,
         triangleIndices},
        {"numbers of every kind",
         "Mesh{ 2 ;1e1; -.5 ; 0x10;,+3.;1e-1;x;;1;3; 0,1 ,01;;MeshNormals{1;0;0;1;;1;3;0,0,0;;}}",
         true,
         {{10, -.5, 16, 0, 0, 1, 0, 0}, {3, .1f, 0, 0, 0, 1, 0, 0}},
         {0, 1, 1}},
        {"stray separators behind the lists",
         "Mesh{3;0;0;0;,1;0;0;,0;2;0;;1;3;0,1,2;; ;\n;; {} " + normalZ + "}", true, triangleVertices,
         triangleIndices},
        {"counts of -1 and 0", "Mesh{-1;0;MeshNormals{-1;-1;}MeshTextureCoords{0;}}", true, none, noIndices},
        {"a count of 2^31 is negative", "Mesh{2147483648;2147483648;MeshNormals{0;0;}}", true, none,
         noIndices},
        {"a count far over the file", "Mesh{2147483647;1;1;1;,", false, none, noIndices},
        // The second vertex is (1, 3, "0,1,2" = 0); the face count is "MeshNormals{1" = 0.
        {"one vertex too many",
         "Mesh{2;0;0;0;;1;3;0,1,2;;MeshNormals{1;0;0;1;;}{}" + normalZ + "}",
         true,
         {{0, 0, 0, nan, nan, nan, 0, 0}, {1, 3, 0, nan, nan, nan, 0, 0}},
         noIndices},
        {"materials, skin and a list of two faces",
         "Mesh{3;0;0;0;,1;0;0;,0;2;0;;2;3;0,1,2;,3;2,1,0;;XSkinMeshHeader{1;1;1;}\n"
         "MeshMaterialList{1;2;0,0;;Material "
         "m{1;1;1;1;;5;0;0;0;;0;0;0;;TextureFilename{\"a}b.png\";}}\n{ref}\n}"
         "SkinWeights{\"Bone\";1;0;1.0;;}MeshNormals{1;0;0;1;;2;3;0,0,0;,3;0,0,0;;}}",
         true,
         triangleVertices,
         {0, 1, 2, 2, 1, 0}},
        {"a material list without faces", "Mesh{0;0;MeshMaterialList{1;0;0;;}MeshNormals{0;0;}}" + loadable,
         true, triangleVertices, triangleIndices},
    };
}

void expectMesh(VX_GLMeshData& mesh, const Case& wanted) {
    ASSERT_EQ(mesh.m_Vertex->m_Count, static_cast<int>(wanted.vertices.size()));
    EXPECT_EQ(mesh.m_Vertex->m_Format, 7);
    for (std::size_t i = 0; i < wanted.vertices.size(); ++i) {
        const auto* got = static_cast<const float*>(mesh.m_Vertex->Seek(static_cast<int>(i)));
        for (int value = 0; value < 8; ++value) {
            const float want = wanted.vertices[i][value];
            EXPECT_TRUE(got[value] == want || (std::isnan(got[value]) && std::isnan(want)))
                << "vertex " << i << " value " << value << ": " << got[value] << " for " << want;
        }
    }
    EXPECT_EQ(std::vector<unsigned>(mesh.m_Index, mesh.m_Index + mesh.m_IndexCount), wanted.indices);
}

bool loads(const std::string& file) {
    VX_GLMeshXLoader loader;
    return loader.Load(TemporaryFile(file).path());
}

/// Everything that `processMesh` and its like read.
std::string everyBlock() {
    std::string file = header + "template A {\n<0> {x} \n}\n";
    for (const Case& one : cases())
        file += one.loads ? one.text + "\n" : "";
    return file;
}

} // namespace

TEST(XLoader, FilesAndWhatTheyGive) {
    for (const Case& one : cases()) {
        SCOPED_TRACE(one.name);
        VX_GLMeshXLoader loader;
        ASSERT_EQ(loader.Load(TemporaryFile(header + one.text).path()), one.loads);
        if (one.loads)
            expectMesh(*loader.m_Meshes[0], one);
        else
            EXPECT_EQ(loader.m_Meshes[0]->m_Vertex, nullptr) << "a failed load leaves the mesh as it was";
    }
}

TEST(XLoader, HeadersOfBothVersionsAndNoOther) {
    for (const char* good : {"xof 0302txt 0032", "xof 0303txt 0064", "xof 0303txt \r\n\xff\x01"})
        EXPECT_TRUE(loads(good + loadable)) << good;
    for (const char* bad : {"", "x", "xof 0303txt", "xof 0301txt 0032", "xof 0403txt 0032",
                            "xof 0303bin 0032", "Xof 0303txt 0032", "xof 0303txt\t0032"})
        EXPECT_FALSE(loads(bad + loadable)) << bad;
}

TEST(XLoader, IsReusableAndKeepsTheFileOpenAfterAWrongHeader) {
    VX_GLMeshXLoader loader;
    EXPECT_FALSE(loader.Load(TemporaryFile("nothing of the kind, and long enough").path()));
    EXPECT_NE(loader.m_Lexer, nullptr);
    EXPECT_FALSE(loader.Load("/nonexistent/file.x"));
    EXPECT_EQ(loader.m_Lexer, nullptr);
    EXPECT_FALSE(loader.Load("/tmp"));
    EXPECT_FALSE(loader.Load(nullptr));

    const std::string large = "Mesh{" + quad + "MeshNormals{1;0;1;0;;1;4;0,0,0,0;;}}";
    ASSERT_TRUE(loader.Load(TemporaryFile(header + large).path()));
    EXPECT_EQ(loader.m_Lexer, nullptr);
    EXPECT_TRUE(loader.m_HasQuads);
    void* block = loader.m_Meshes[0]->m_Vertex->m_Data;
    ASSERT_TRUE(loader.Load(TemporaryFile(header + loadable).path()));
    EXPECT_FALSE(loader.m_HasQuads);
    EXPECT_EQ(loader.m_Positions.size(), 3u);
    EXPECT_EQ(loader.m_FaceCount, 1);
    EXPECT_EQ(loader.m_Meshes[0]->m_Vertex->m_Data, block);
    EXPECT_EQ(loader.m_Meshes[0]->m_Vertex->m_Count, 4) << "the block of the larger mesh stays";
    EXPECT_EQ(loader.m_Meshes[0]->m_IndexCount, 3);
    loader.freeAllMesh();
    EXPECT_FALSE(loader.Load(TemporaryFile(header + loadable).path())) << "no mesh is left to fill";
}

TEST(XLoader, AGoodFileCutAtEveryByteAndSpoiledAtRandom) {
    const std::string file = everyBlock();
    VX_GLMeshXLoader loader;
    ASSERT_TRUE(loader.Load(TemporaryFile(file).path()));
    const int count = loader.m_Meshes[0]->m_Vertex->m_Count;
    std::size_t loaded = 0;
    for (std::size_t length = 0; length < file.size(); ++length) {
        if (loader.Load(TemporaryFile(std::string_view(file).substr(0, length)).path()))
            loaded += loader.m_Meshes[0]->m_Index != nullptr;
        ASSERT_LE(loader.m_Meshes[0]->m_Vertex->m_Count, count);
    }
    EXPECT_GT(loaded, file.size() / 2);

    std::mt19937 random(3);
    for (int round = 0; round < 2000; ++round) {
        std::string spoiled = file;
        for (int i = 0; i < 8; ++i)
            spoiled[16 + random() % (file.size() - 16)] = "{};,/#\r\n \"-09\xff"[random() % 15];
        loader.Load(TemporaryFile(spoiled).path());
        loader.makeNormalVector(0);
        loader.calcRaiusCenter(0);
        ASSERT_LE(loader.m_Positions.size(), spoiled.size() / 4);
    }
}

TEST(XLoader, TakesNoMemoryForCountsWithoutData) {
    for (const char* count : {"2147483647", "100000000", "65536"}) {
        const std::string much = count, body = "1;3;0,0,0;;";
        for (const std::string& text :
             {"Mesh{" + much + ";1;1;1;;" + body, "Mesh{1;1;1;1;;" + much + ";3;0,0,0;,4;0,0,0,0;,",
              "Mesh{1;1;1;1;;" + body + "MeshNormals{" + much + ";1;1;1;,1;",
              "Mesh{1;1;1;1;;" + body + "MeshNormals{1;1;1;1;;" + much + ";" + much + ";0,0,0,0",
              "Mesh{1;1;1;1;;" + body + "MeshTextureCoords{" + much + ";1;1;,",
              "Mesh{1;1;1;1;;" + much + ";3;0,0,0;;MeshMaterialList{1;1;0;;}"}) {
            VX_GLMeshXLoader loader;
            loader.Load(TemporaryFile(header + text).path());
            const std::size_t most = text.size() + header.size();
            EXPECT_LE(loader.m_Positions.capacity(), most) << text;
            EXPECT_LE(loader.m_UVs.capacity(), most) << text;
            EXPECT_LE(loader.m_FaceIndices.capacity(), most) << text;
            EXPECT_LE(loader.m_Normals.capacity(), most) << text;
        }
    }
}

TEST(XLoader, ManyBlocksOfNormalsDoNotCostManyLists) {
    std::string text = header + "Mesh{300000;";
    for (int i = 0; i < 300000; ++i)
        text += ";;;,";
    text += "1;3;0,1,2;;";
    for (int i = 0; i < 100000; ++i)
        text += "MeshNormals{1;0;0;1;;1;3;0,0,0;;}";
    VX_GLMeshXLoader loader;
    ASSERT_TRUE(loader.Load(TemporaryFile(text + "MeshNormals{1;0;2;0;;1;2;0,0;;}}").path()));
    EXPECT_EQ(loader.m_Normals[1], glm::tvec3<float>(0, 2, 0));
    EXPECT_TRUE(std::isnan(loader.m_Normals[2].x)) << "it was known to an earlier block only";
}

TEST(XLoader, AMillionBracesDeep) {
    const std::size_t depth = 1000000;
    const std::string open(depth, '{');
    std::string closed;
    for (std::size_t i = 0; i < depth; ++i)
        closed += "}\n";
    EXPECT_TRUE(loads(header + open));
    EXPECT_TRUE(loads(header + "Mesh{0;0;" + open));
    Case deep{"deep", header + "template T " + open + closed + loadable, true, triangleVertices,
              triangleIndices};
    VX_GLMeshXLoader loader;
    ASSERT_TRUE(loader.Load(TemporaryFile(deep.text).path()));
    expectMesh(*loader.m_Meshes[0], deep);
}

TEST(XLoader, KeywordsAndTheirCodes) {
    struct {
        const char* text;
        int code;
        int next; ///< the character that is left to read, -1 for the end
    } const rows[] = {
        {"template x", 60, 'x'},
        {"Header {", 61, '{'},
        {"Frame\n\tx", 62, 'x'},
        {"FrameTransformMatrix{", 63, '{'},
        {"Mesh{", 64, '{'},
        {"MeshTextureCoords {", 65, '{'},
        {"MeshMaterialList {", 66, '{'},
        {"Material m", 67, 'm'},
        {"XSkinMeshHeader {", 68, '{'},
        {"SkinWeights{", 69, '{'},
        {"TextureFilename {", 70, '{'},
        {"MeshNormals {", 71, '{'},
        {"AnimationSet a", 72, 'a'},
        {"Animation {", 73, '{'},
        {"AnimationKey {", 74, '{'},
        {"mesh {", 255, ' '},
        {"Meshes {", 255, ' '},
        {"{", 10, '{'},
        {"}x", 11, 'x'},
        {" x", 254, 'x'},
        {"\tx", 254, 'x'},
        {"\nx", 254, 'x'},
        {"\r\nx", 254, 'x'},
        {"#x\ny", 254, 'y'},
        {"//x\ny", 254, 'y'},
        {"/x", -1, 'x'},
        {"\r{", -1, '{'},
        {"", 254, -1},
        {"Mesh", 254, -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text);
        const TemporaryFile file(row.text);
        VX_GLMeshXLoader loader;
        EXPECT_EQ(loader.processBlock(), 254) << "nothing is open";
        loader.m_Lexer = new VX_SystemSimpleLex(std::fopen(file.path(), "r"));
        EXPECT_EQ(loader.processBlock(), row.code);
        EXPECT_EQ(loader.m_Lexer->peek(), row.next);
    }
    EXPECT_EQ(std::string(Templates[1].keyword), "FrameTransformMatrix");
    EXPECT_EQ(Templates[14].code, 61);
}

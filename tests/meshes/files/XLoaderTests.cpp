// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>
#include <tests/support/TemporaryFile.h>

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <random>
#include <string>
#include <vector>

using vx::test::TemporaryFile;

namespace {

const std::string kHeader = "xof 0303txt 0032\n";

// A triangle in the xy plane with one normal, and a quad. Every list is without the closing brace of the
// mesh.
const std::string kTriangle = "3;0;0;0;,1;0;0;,0;2;0;;1;3;0,1,2;;";
const std::string kNormalZ = "MeshNormals{1;0;0;1;;1;3;0,0,0;;}";
const std::string kLoadable = "Mesh{" + kTriangle + kNormalZ + "}";
const std::string kTriangleMesh = "0 0 0 0 0 1 0 0, 1 0 0 0 0 1 0 0, 0 2 0 0 0 1 0 0, : 0 1 2";
const std::string kUnlitMesh = "0 0 0 nan nan nan 0 0, 1 0 0 nan nan nan 0 0, 0 2 0 nan nan nan 0 0, :";
const std::string kQuad = "4;0;0;0;,1;0;0;,1;1;0;,0;1;0;;1;4;0,1,2,3;;";
const std::string kQuadVertices = "0 0 0 0 1 0 0 0, 1 0 0 0 1 0 0 0, 1 1 0 0 1 0 0 0, 0 1 0 0 1 0 0 0, : ";

struct Case {
    const char* name;
    std::string text; ///< behind the header
    /// The mesh as `textOf` writes it, null for a file that does not load.
    std::optional<std::string> mesh = kTriangleMesh;
};

/// Position, normal and texture coordinate of each vertex, then the indices.
std::string textOf(const VX_GLMeshData& mesh) {
    std::string text;
    for (int i = 0; i < mesh.m_Vertex->m_Count; ++i) {
        for (int value = 0; value < 8; ++value) {
            char number[32];
            const float got = static_cast<const float*>(mesh.m_Vertex->Seek(i))[value];
            std::snprintf(number, sizeof number, "%.9g", static_cast<double>(got + 0.0f));
            text += (value ? " " : "") + std::string(std::isnan(got) ? "nan" : number);
        }
        text += ", ";
    }
    text += ":";
    for (int i = 0; i < mesh.m_IndexCount; ++i)
        text += " " + std::to_string(mesh.m_Index[i]);
    EXPECT_EQ(mesh.m_Vertex->m_Format, 7);
    return text;
}

const Case kCases[] = {
    {"triangle with texture coordinates",
     "Mesh m {" + kTriangle + "MeshTextureCoords{3;0.25;.5;,1;0;,-1;2.5;;}" + kNormalZ + "}",
     "0 0 0 0 0 1 0.25 0.5, 1 0 0 0 0 1 1 0, 0 2 0 0 0 1 -1 2.5, : 0 1 2"},
    {"fewer texture coordinates than positions",
     "Mesh {" + kTriangle + kNormalZ + "MeshTextureCoords{2;1;1;,1;0;;}}"},
    {"more texture coordinates than positions",
     "Mesh {" + kTriangle + kNormalZ + "MeshTextureCoords{4;1;1;,1;1;,1;1;,1;0;;}}"},
    {"quad", "Mesh{" + kQuad + "MeshNormals{1;0;1;0;;1;4;0,0,0,0;;}}", kQuadVertices + "0 1 2 2 3 0 0 0"},
    // Seven entries, 0 1 2 and 0 1 2 3: one group of four, three left over, fourteen indices.
    {"triangle before a quad",
     "Mesh{4;0;0;0;,1;0;0;,1;1;0;,0;1;0;;2;3;0,1,2;,4;0,1,2,3;;MeshNormals{1;0;1;0;;2;3;0,0,0;,4;0,0,0,0;;}}",
     kQuadVertices + "0 1 2 2 0 0 0 0 0 0 0 0 0 0"},
    {"triangle behind a quad",
     "Mesh{4;0;0;0;,1;0;0;,1;1;0;,0;1;0;;2;4;0,1,2,3;,3;0,1,2;;MeshNormals{1;0;1;0;;2;4;0,0,0,0;,3;0,0,0;;}}",
     kQuadVertices + "0 1 2 2 3 0 0 0 0 0 0 0 0 0"},
    {"pentagon: its corners are words, and the first block behind them is skipped",
     "Mesh{3;0;0;0;,1;0;0;,0;2;0;;1;5;0,1,2,3,4;;\nMeshNormals{9;}" + kNormalZ + "}", kUnlitMesh},
    {"no normals", "Mesh{" + kTriangle + "}", std::nullopt},
    {"normals cut off", "Mesh{" + kTriangle + "MeshNormals", std::nullopt},
    {"nothing behind the header", "", ":"},
    // Corners of vertex 0: x and y; of vertex 1: x; vertices 2 and 3: z. Vertex 4 has no face.
    {"mean of different normals",
     "Mesh{5;0;0;0;,1;0;0;,0;2;0;,3;3;3;,4;4;4;;2;3;0,1,2;,3;0,2,3;;"
     "MeshNormals{3;1;0;0;,0;1;0;,0;0;1;;2;3;0,0,2;,3;1,2,2;;}}",
     "0 0 0 0.5 0.5 0 0 0, 1 0 0 1 0 0 0 0, 0 2 0 0 0 1 0 0, 3 3 3 0 0 1 0 0, 4 4 4 nan nan nan 0 0, "
     ": 0 1 2 0 2 3"},
    {"normals of a vertex that cancel out",
     "Mesh{1;7;8;9;;1;3;0,0,0;;MeshNormals{2;0;0;2;,0;0;-1;;1;3;0,1,1;;}}", "7 8 9 0 0 0 0 0, : 0 0 0"},
    // The list has a corner of vertex 9, which is none, and one of normal 7 or -1, which is none either.
    {"indices outside",
     "Mesh{3;0;0;0;,1;0;0;,0;2;0;;2;3;0,1,9;,3;0,0,-2;;MeshNormals{1;0;0;1;;2;3;0,7,0;,3;-1,0,0;;}}",
     "0 0 0 0 0 1 0 0, 1 0 0 nan nan nan 0 0, 0 2 0 nan nan nan 0 0, : 0 1 9 0 0 4294967294"},
    {"the first index outside", "Mesh{1;0;0;0;;1;3;1,0,0;;MeshNormals{1;0;0;1;;1;3;0,1,0;;}}",
     "0 0 0 0 0 1 0 0, : 1 0 0"},
    {"normals of more and of fewer corners than the faces have",
     "Mesh{" + kTriangle +
         "MeshNormals{1;0;0;1;;2;5;0,0,0,0,0;,2;0,0;;}}"
         "Mesh{0;0;MeshNormals{1;0;0;1;;1;2;0,0;;}}",
     "0 0 0 0 0 1 0 0, 1 0 0 0 0 1 0 0, 0 2 0 nan nan nan 0 0, : 0 1 2"},
    // The second block's normals are matched to the first corners of the whole list.
    {"two meshes", kLoadable + "Mesh{1;5;6;7;;1;3;0,0,0;;MeshNormals{1;1;0;0;;1;3;0,0,0;;}}",
     "0 0 0 1 0 0 0 0, 1 0 0 1 0 0 0 0, 0 2 0 1 0 0 0 0, 5 6 7 nan nan nan 0 0, : 0 1 2 0 0 0"},
    {"mesh in a frame", "Frame{" + kLoadable + "}", ":"},
    {"mesh in a named frame, another behind it", "Frame Root\n{ Mesh m { 1; 9;9;9;; } }\n" + kLoadable},
    {"animation set, header, templates and unknown blocks",
     "template A { <0-1> {x} [...] }\nHeader {1;0;1;}\nAnimationSet S {Animation{{R}\n}\n}\n"
     "{Some {thing} }\nUnknown{}\n" +
         kLoadable},
    {"a block that closes right behind an inner one runs on to the next brace",
     "template A {{}}\nmore }\n" + kLoadable},
    {"and takes a mesh with it", "template A {{}}\n" + kLoadable, ":"},
    {"comments wherever a block may start",
     "// one {\n# two }\n//\nMesh {" + kTriangle + "\n// {\n# }\n" + kNormalZ + "\n//}\n}\n//"},
    {"a slash at the top level", kLoadable + "\n/", std::nullopt},
    {"a slash inside the mesh skips a block", "Mesh{" + kTriangle + "/{ }" + kNormalZ + "}"},
    {"Windows line ends",
     "\r\nMesh\r\n{\r\n3;\r\n0;0;0;,\r\n1;0;0;,\r\n0;2;0;;\r\n1;\r\n3;0,1,2;;\r\n"
     "MeshNormals\r\n{\r\n1;\r\n0;0;1;;\r\n1;\r\n3;0,0,0;;\r\n}\r\n}\r\n"},
    {"a lone return before a brace", "\r{}" + kLoadable, {}},
    {"a lone return before a word", "\r" + kLoadable},
    {"names with quotes, blanks and bytes of any kind",
     "Mesh \"K\xc3\xb6rper 1\"\xff\x01 {" + kTriangle + kNormalZ + "}"},
    {"numbers of every kind",
     "Mesh{ 2 ;1e1; -.5 ; 0x10;,+3.;1e-1;x;;1;3; 0,1 ,01;;MeshNormals{1;0;0;1;;1;3;0,0,0;;}}",
     "10 -0.5 16 0 0 1 0 0, 3 0.100000001 0 0 0 1 0 0, : 0 1 1"},
    {"stray separators behind the lists",
     "Mesh{3;0;0;0;,1;0;0;,0;2;0;;1;3;0,1,2;; ;\n;; {} " + kNormalZ + "}"},
    {"counts of -1 and 0", "Mesh{-1;0;MeshNormals{-1;-1;}MeshTextureCoords{0;}}", ":"},
    {"a count of 2^31 is negative", "Mesh{2147483648;2147483648;MeshNormals{0;0;}}", ":"},
    {"a count far over the file", "Mesh{2147483647;1;1;1;,", std::nullopt},
    // The second vertex is (1, 3, "0,1,2" = 0); the face count is "MeshNormals{1" = 0.
    {"one vertex too many", "Mesh{2;0;0;0;;1;3;0,1,2;;MeshNormals{1;0;0;1;;}{}" + kNormalZ + "}",
     "0 0 0 nan nan nan 0 0, 1 3 0 nan nan nan 0 0, :"},
    {"materials, skin and a list of two faces",
     "Mesh{3;0;0;0;,1;0;0;,0;2;0;;2;3;0,1,2;,3;2,1,0;;XSkinMeshHeader{1;1;1;}\nMeshMaterialList{1;2;0,0;;"
     "Material m{1;1;1;1;;5;0;0;0;;0;0;0;;TextureFilename{\"a}b.png\";}}\n{ref}\n}"
     "SkinWeights{\"Bone\";1;0;1.0;;}MeshNormals{1;0;0;1;;2;3;0,0,0;,3;0,0,0;;}}",
     kTriangleMesh + " 2 1 0"},
    {"a material list without faces", "Mesh{0;0;MeshMaterialList{1;0;0;;}MeshNormals{0;0;}}" + kLoadable},
};

bool loads(const std::string& file) {
    VX_GLMeshXLoader loader;
    return loader.Load(TemporaryFile(file).path());
}

/// Everything that `processMesh` and its like read.
std::string everyBlock() {
    std::string file = kHeader + "template A {\n<0> {x} \n}\n";
    for (const Case& one : kCases)
        file += one.mesh ? one.text + "\n" : "";
    return file;
}

} // namespace

TEST(VX_GLMeshXLoader, ReadsFilesOfEveryKindAndHeadersOfTwo) {
    for (const Case& one : kCases) {
        VX_GLMeshXLoader loader;
        const bool loaded = loader.Load(TemporaryFile(kHeader + one.text).path());
        ASSERT_EQ(loaded, one.mesh.has_value()) << one.name;
        if (loaded)
            EXPECT_EQ(textOf(*loader.m_Meshes[0]), *one.mesh) << one.name;
        else
            EXPECT_EQ(loader.m_Meshes[0]->m_Vertex, nullptr) << "a failed load leaves the mesh as it was";
    }
    for (const char* good : {"xof 0302txt 0032", "xof 0303txt 0064", "xof 0303txt \r\n\xff\x01"})
        EXPECT_TRUE(loads(good + kLoadable)) << good;
    for (const char* bad : {"", "x", "xof 0303txt", "xof 0301txt 0032", "xof 0304txt 0032",
                            "xof 0403txt 0032", "xof 0303bin 0032", "Xof 0303txt 0032", "xof 0303txt\t0032"})
        EXPECT_FALSE(loads(bad + kLoadable)) << bad;
}

TEST(VX_GLMeshXLoader, IsReusableAndKeepsTheFileOpenAfterAWrongHeader) {
    VX_GLMeshXLoader loader;
    EXPECT_FALSE(loader.Load(TemporaryFile("nothing of the kind, and long enough").path()));
    EXPECT_NE(loader.m_Lexer, nullptr);
    EXPECT_FALSE(loader.Load("/nonexistent/file.x"));
    EXPECT_EQ(loader.m_Lexer, nullptr);
    EXPECT_FALSE(loader.Load("/tmp"));
    EXPECT_FALSE(loader.Load(nullptr));

    for (int round = 0; round < 2; ++round) { // with texture coordinates
        ASSERT_TRUE(loader.Load(TemporaryFile(kHeader + kCases[0].text).path()));
        EXPECT_EQ(textOf(*loader.m_Meshes[0]), kCases[0].mesh);
    }
    const std::string large = "Mesh{" + kQuad + "MeshNormals{1;0;1;0;;1;4;0,0,0,0;;}}";
    ASSERT_TRUE(loader.Load(TemporaryFile(kHeader + large).path()));
    EXPECT_EQ(loader.m_Lexer, nullptr);
    EXPECT_TRUE(loader.m_HasQuads);
    void* block = loader.m_Meshes[0]->m_Vertex->m_Data;
    ASSERT_TRUE(loader.Load(TemporaryFile(kHeader + kLoadable).path()));
    EXPECT_FALSE(loader.m_HasQuads);
    EXPECT_EQ(loader.m_Positions.size(), 3u);
    EXPECT_EQ(loader.m_FaceCount, 1);
    EXPECT_EQ(loader.m_Meshes[0]->m_Vertex->m_Data, block);
    EXPECT_EQ(loader.m_Meshes[0]->m_Vertex->m_Count, 4) << "the block of the larger mesh stays";
    EXPECT_EQ(loader.m_Meshes[0]->m_IndexCount, 3);
    EXPECT_TRUE(loader.Load(TemporaryFile(kHeader).path()));
    EXPECT_EQ(loader.m_FaceCount, 0);
    loader.freeAllMesh();
    EXPECT_FALSE(loader.Load(TemporaryFile(kHeader + kLoadable).path())) << "no mesh is left to fill";
}

TEST(VX_GLMeshXLoader, AGoodFileCutAtEveryByteAndSpoiledAtRandom) {
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

TEST(VX_GLMeshXLoader, TakesNoMemoryForCountsWithoutData) {
    for (const char* count : {"2147483647", "100000000", "65536"}) {
        const std::string much = count, body = "1;3;0,0,0;;";
        for (const std::string& text :
             {"Mesh{" + much + ";1;1;1;;" + body, "Mesh{1;1;1;1;;" + much + ";3;0,0,0;,4;0,0,0,0;,",
              "Mesh{1;1;1;1;;" + body + "MeshNormals{" + much + ";1;1;1;,1;",
              "Mesh{1;1;1;1;;" + body + "MeshNormals{1;1;1;1;;" + much + ";" + much + ";0,0,0,0",
              "Mesh{1;1;1;1;;" + body + "MeshTextureCoords{" + much + ";1;1;,",
              "Mesh{1;1;1;1;;" + much + ";3;0,0,0;;MeshMaterialList{1;1;0;;}"}) {
            VX_GLMeshXLoader loader;
            loader.Load(TemporaryFile(kHeader + text).path());
            const std::size_t most = text.size() + kHeader.size();
            EXPECT_LE(loader.m_Positions.capacity(), most) << text;
            EXPECT_LE(loader.m_UVs.capacity(), most) << text;
            EXPECT_LE(loader.m_FaceIndices.capacity(), most) << text;
            EXPECT_LE(loader.m_Normals.capacity(), most) << text;
        }
    }
}

TEST(VX_GLMeshXLoader, ManyBlocksOfNormalsDoNotCostManyLists) {
    std::string text = kHeader + "Mesh{300000;";
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

TEST(VX_GLMeshXLoader, AMillionBracesDeep) {
    const std::size_t depth = 1000000;
    const std::string open(depth, '{');
    std::string closed;
    for (std::size_t i = 0; i < depth; ++i)
        closed += "}\n";
    EXPECT_TRUE(loads(kHeader + open));
    EXPECT_TRUE(loads(kHeader + "Mesh{0;0;" + open));
    VX_GLMeshXLoader loader;
    ASSERT_TRUE(loader.Load(TemporaryFile(kHeader + "template T " + open + closed + kLoadable).path()));
    EXPECT_EQ(textOf(*loader.m_Meshes[0]), kTriangleMesh);
}

TEST(VX_GLMeshXLoader, TellsBlocksByTheirCodes) {
    const struct {
        const char* text;
        int code;
        int next; ///< the character that is left to read, -1 for the end
    } rows[] = {{"template x", 60, 'x'},
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
                {"Mesh", 254, -1}};
    for (const auto& [text, code, next] : rows) {
        const TemporaryFile file(text);
        VX_GLMeshXLoader loader;
        EXPECT_EQ(loader.processBlock(), 254) << "nothing is open";
        loader.m_Lexer = new VX_SystemSimpleLex(std::fopen(file.path(), "r"));
        EXPECT_EQ(loader.processBlock(), code) << text;
        EXPECT_EQ(loader.m_Lexer->peek(), next) << text;
    }
    EXPECT_EQ(std::string(Templates[1].keyword), "FrameTransformMatrix");
    EXPECT_EQ(Templates[14].code, 61);
}

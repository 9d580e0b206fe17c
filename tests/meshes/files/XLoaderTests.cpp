// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/files/VX_GLMeshXLoader.h>
#include <tests/support/TemporaryFile.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <regex>
#include <sstream>
#include <string>

using vx::test::TemporaryFile;

namespace {

const std::string kHeader = "xof 0303txt 0032\n";

// A triangle in the xy plane with one normal, and a quad. Every list is without the closing brace of the
// mesh.
const std::string kTriangle = "3;0;0;0;,1;0;0;,0;2;0;;1;3;0,1,2;;";
const std::string kNormalZ = "MeshNormals{1;0;0;1;;1;3;0,0,0;;}";
const std::string kLit = "Mesh {" + kTriangle + kNormalZ;
const std::string kLoadable = kLit + "}";
const std::string kTriangleMesh = "0 0 0 0 0 1 0 0, 1 0 0 0 0 1 0 0, 0 2 0 0 0 1 0 0, : 0 1 2";
const std::string kUnlitMesh = "0 0 0 nan nan nan 0 0, 1 0 0 nan nan nan 0 0, 0 2 0 nan nan nan 0 0, :";
const std::string kSquare = "Mesh{4;0;0;0;,1;0;0;,1;1;0;,0;1;0;;";
const std::string kQuad = kSquare + "1;4;0,1,2,3;;MeshNormals{1;0;1;0;;1;4;0,0,0,0;;}}";
const std::string kQuadVertices = "0 0 0 0 1 0 0 0, 1 0 0 0 1 0 0 0, 1 1 0 0 1 0 0 0, 0 1 0 0 1 0 0 0, : ";
const std::string kTextured = kLit + "MeshTextureCoords{3;0.25;.5;,1;0;,-1;2.5;;}}";
const std::string kTexturedMesh = "0 0 0 0 0 1 0.25 0.5, 1 0 0 0 0 1 1 0, 0 2 0 0 0 1 -1 2.5, : 0 1 2";
const std::string kFails = "does not load";

struct Case {
    const char* name;
    std::string text;                 ///< behind the header
    std::string mesh = kTriangleMesh; ///< as `textOf` writes it
};

/// Position, normal and texture coordinate of each vertex, then the indices.
std::string textOf(const VX_GLMeshData& mesh) {
    std::ostringstream text;
    text.precision(9);
    EXPECT_EQ(mesh.m_Vertex->m_Format, 7);
    for (int i = 0; i < mesh.m_Vertex->m_Count; ++i) {
        for (int value = 0; value < 8; ++value) {
            const float got = static_cast<const float*>(mesh.m_Vertex->Seek(i))[value];
            text << (value ? " " : "") << (std::isnan(got) ? NAN : got + 0.0f);
        }
        text << ", ";
    }
    text << ":";
    for (int i = 0; i < mesh.m_IndexCount; ++i)
        text << ' ' << mesh.m_Index[i];
    return text.str();
}

const Case kCases[] = {
    {"texture coordinates", kTextured, kTexturedMesh},
    {"fewer texture coordinates than positions", kLit + "MeshTextureCoords{2;1;1;,1;0;;}}"},
    {"quad", kQuad, kQuadVertices + "0 1 2 2 3 0 0 0"},
    // Seven entries, 0 1 2 and 0 1 2 3: one group of four, three left over, fourteen indices.
    {"triangle before a quad",
     kSquare + "2;3;0,1,2;,4;0,1,2,3;;MeshNormals{1;0;1;0;;2;3;0,0,0;,4;0,0,0,0;;}}",
     kQuadVertices + "0 1 2 2 0 0 0 0 0 0 0 0 0 0"},
    {"pentagon: its corners are words, and the first block behind them is skipped",
     "Mesh{3;0;0;0;,1;0;0;,0;2;0;;1;5;0,1,2,3,4;;\nMeshNormals{9;}" + kNormalZ + "}", kUnlitMesh},
    {"no normals", "Mesh{" + kTriangle + "}", kFails},
    {"nothing behind the header", "", ":"},
    // Corners of vertex 0: x and y; of vertex 1: x; vertices 2 and 3: z. Vertex 4 has no face.
    {"mean of different normals",
     "Mesh{5;0;0;0;,1;0;0;,0;2;0;,3;3;3;,4;4;4;;2;3;0,1,2;,3;0,2,3;;"
     "MeshNormals{3;1;0;0;,0;1;0;,0;0;1;;2;3;0,0,2;,3;1,2,2;;}}",
     "0 0 0 0.5 0.5 0 0 0, 1 0 0 1 0 0 0 0, 0 2 0 0 0 1 0 0, 3 3 3 0 0 1 0 0, 4 4 4 nan nan nan 0 0, "
     ": 0 1 2 0 2 3"},
    // The list has a corner of vertex 9, which is none, and one of normal 1 or -1, which is none either.
    {"indices outside",
     "Mesh{3;0;0;0;,1;0;0;,0;2;0;;2;3;0,1,9;,3;0,0,-2;;MeshNormals{1;0;0;1;;2;3;0,1,0;,3;-1,0,0;;}}",
     "0 0 0 0 0 1 0 0, 1 0 0 nan nan nan 0 0, 0 2 0 nan nan nan 0 0, : 0 1 9 0 0 4294967294"},
    {"more and fewer normals than corners",
     "Mesh{" + kTriangle +
         "MeshNormals{1;0;0;1;;2;5;0,0,0,0,0;,2;0,0;;}}Mesh{0;0;MeshNormals{1;0;0;1;;1;2;0,0;;}}",
     "0 0 0 0 0 1 0 0, 1 0 0 0 0 1 0 0, 0 2 0 nan nan nan 0 0, : 0 1 2"},
    // The second block's normals are matched to the first corners of the whole list.
    {"two meshes", kLoadable + "Mesh{1;5;6;7;;1;3;0,0,0;;MeshNormals{1;1;0;0;;1;3;0,0,0;;}}",
     "0 0 0 1 0 0 0 0, 1 0 0 1 0 0 0 0, 0 2 0 1 0 0 0 0, 5 6 7 nan nan nan 0 0, : 0 1 2 0 0 0"},
    {"mesh in a named frame, another behind it", "Frame Root\n{ Mesh m { 1; 9;9;9;; } }\n" + kLoadable},
    {"animation set, header, templates and unknown blocks",
     "template A { <0-1> {x} [...] }\nHeader {1;0;1;}\nAnimationSet S {Animation{{R}\n}\n}\n"
     "{Some {thing} }\nUnknown{}\nMeshes {}\nmesh{}\n" +
         kLoadable},
    {"runs on behind an inner block to the next brace, and takes a mesh with it",
     "template A {{}}\n" + kLoadable, ":"},
    {"comments", "// one {\n# two }\n//\nMesh {" + kTriangle + "\n// {\n# }\n" + kNormalZ + "\n//}\n}\n//"},
    {"a slash at the top level", kLoadable + "\n/", kFails},
    {"Windows line ends",
     "\r\nMesh\r\n{\r\n3;\r\n0;0;0;,\r\n1;0;0;,\r\n0;2;0;;\r\n1;\r\n3;0,1,2;;\r\n"
     "MeshNormals\r\n{\r\n1;\r\n0;0;1;;\r\n1;\r\n3;0,0,0;;\r\n}\r\n}\r\n"},
    {"names of any bytes", "Mesh \"K\xc3\xb6rper 1\"\xff\x01 {" + kTriangle + kNormalZ + "}"},
    {"numbers of every kind",
     "Mesh{ 2 ;1e1; -.5 ; 0x10;,+3.;1e-1;x;;1;3; 0,1 ,01;;MeshNormals{1;0;0;1;;1;3;0,0,0;;}}",
     "10 -0.5 16 0 0 1 0 0, 3 0.100000001 0 0 0 1 0 0, : 0 1 1"},
    {"counts of -1 and 0", "Mesh{-1;0;MeshNormals{-1;-1;}MeshTextureCoords{0;}}", ":"},
    {"a count far over the file", "Mesh{2147483647;1;1;1;,", kFails},
    {"materials, skin and a list of two faces",
     "Mesh{3;0;0;0;,1;0;0;,0;2;0;;2;3;0,1,2;,3;2,1,0;;XSkinMeshHeader{1;1;1;}\nMeshMaterialList{1;2;0,0;;"
     "Material m{1;1;1;1;;5;0;0;0;;0;0;0;;TextureFilename{\"a}b.png\";}}\n{ref}\n}"
     "SkinWeights{\"Bone\";1;0;1.0;;}MeshNormals{1;0;0;1;;2;3;0,0,0;,3;0,0,0;;}}",
     kTriangleMesh + " 2 1 0"},
};

/// The mesh that the loader has after loading the text, behind the good header or behind its own.
std::string loaded(VX_GLMeshXLoader& loader, const std::string& text, const std::string& header = kHeader) {
    return loader.Load(TemporaryFile(header + text).path()) ? textOf(*loader.m_Meshes[0]) : kFails;
}

} // namespace

TEST(VX_GLMeshXLoader, ReadsFilesOfEveryKindAndHeadersOfTwo) {
    for (const Case& one : kCases) {
        VX_GLMeshXLoader loader;
        EXPECT_EQ(loaded(loader, one.text), one.mesh) << one.name;
        EXPECT_EQ(loader.m_Meshes[0]->m_Vertex == nullptr, one.mesh == kFails)
            << "a failed load fills nothing";
    }
    VX_GLMeshXLoader loader;
    for (const char* good : {"xof 0302txt 0032", "xof 0303txt 0064", "xof 0303txt \r\n\xff\x01"})
        EXPECT_EQ(loaded(loader, kLoadable, good), kTriangleMesh) << good;
    for (const char* bad : {"", "x", "xof 0303txt", "xof 0301txt 0032", "xof 0304txt 0032",
                            "xof 0403txt 0032", "xof 0303bin 0032", "Xof 0303txt 0032", "xof 0303txt\t0032"})
        EXPECT_EQ(loaded(loader, kLoadable, bad), kFails) << bad;
}

TEST(VX_GLMeshXLoader, IsReusable) {
    VX_GLMeshXLoader loader;
    EXPECT_EQ(loaded(loader, "", "nothing of the kind, and long enough"), kFails);
    for (const char* none : {"/nonexistent/file.x", "/tmp", static_cast<const char*>(nullptr)})
        EXPECT_FALSE(loader.Load(none));
    for (int round = 0; round < 2; ++round)
        EXPECT_EQ(loaded(loader, kTextured), kTexturedMesh);
    EXPECT_EQ(loaded(loader, kQuad), kQuadVertices + "0 1 2 2 3 0 0 0");
    loaded(loader, kLoadable);
    EXPECT_EQ(loader.m_Positions.size() + loader.m_FaceCount + loader.m_HasQuads, 4u) << "none of the quad";
    EXPECT_TRUE(loader.Load(TemporaryFile(kHeader).path()) && loader.m_FaceCount == 0);
    loader.freeAllMesh();
    EXPECT_EQ(loaded(loader, kLoadable), kFails) << "no mesh is left to fill";
    EXPECT_EQ(loader.Triangulate(), -1);
}

TEST(VX_GLMeshXLoader, AListThatTheFileEndsInKeepsItsCountAndTakesNoMoreMemory) {
    const std::string point = "Mesh{1;1;1;1;;", body = point + "1;3;0,0,0;;";
    VX_GLMeshXLoader loader;
    EXPECT_EQ(loaded(loader, body + "MeshNormals{1;0;0;2;;1;3;0,"), "1 1 1 0 0 2 0 0, : 0 0 0");
    EXPECT_EQ(loaded(loader, kLit + "MeshTextureCoords{3;5;6;,"),
              "0 0 0 0 0 1 5 6, 1 0 0 0 0 1 0 0, 0 2 0 0 0 1 0 0, : 0 1 2");
    for (const std::string& text :
         {std::string("Mesh{%;1;1;1;;1;3;0,0,0;;"), point + "%;3;0,0,0;,4;0,0,0,0;,",
          body + "MeshNormals{%;1;1;1;,1;", body + "MeshNormals{1;1;1;1;;%;%;0,0,0,0",
          body + "MeshTextureCoords{%;1;1;,"}) {
        VX_GLMeshXLoader other;
        loaded(other, std::regex_replace(text, std::regex("%"), "2147483647"));
        EXPECT_LT(std::max({other.m_Positions.capacity(), other.m_UVs.capacity(),
                            other.m_FaceIndices.capacity(), other.m_Normals.capacity()}),
                  16'000'100u)
            << text;
    }
}

TEST(VX_GLMeshXLoader, TellsOnRequestWhyItFailedAndWhatItSkipped) {
    const std::pair<std::string, const char*> rows[] = {
        {"Mesh{4;",
         "4 positions and 0 normals: no MeshNormals block was read to its end; "
         "4 entries missing at the file's end"},
        {"Frame F { Mesh {} }\nFrame{}\ntemplate T {}\n{x}", "2 Frame, 1 template, 1 { skipped"},
        {kSquare + "1;5;0,1,2,3,0;;\n" + kNormalZ + kNormalZ + "}",
         "1 ,1,2,3,0;; skipped; faces misread from one of 5 corners on"},
        {"/", "a \"/\" at the top level that begins no comment"}};
    VX_GLMeshXLoader loader;
    for (const auto& [text, told] : rows) {
        const bool fails = loaded(loader, text) == kFails;
        EXPECT_EQ(loader.Report().failure.empty(), !fails) << text;
        EXPECT_EQ(loader.Report().text(), told) << text;
    }
    loaded(loader, "", "xof 0303bin 0032");
    EXPECT_EQ(loader.Report().text(),
              "it does not begin with \"xof 0302txt \" or \"xof 0303txt \": another kind of X file");
    loader.Load("/dev/zero");
    EXPECT_EQ(loader.Report().text(), "it is no regular file");
    loader.Load("/nonexistent/file.x");
    EXPECT_EQ(loader.Report().text(), "No such file or directory");
}

TEST(VX_GLMeshXLoader, TriangulatesAMixedMeshFaceByFace) {
    VX_GLMeshXLoader loader;
    EXPECT_EQ(loader.Triangulate(), -1);
    loaded(loader, kQuad);
    EXPECT_NE(loaded(loader, kSquare + "4;3;0,1,2;,4;0,1,2,3;,4;3,0,1,9;,3;2,3,0;;"
                                       "MeshNormals{1;0;1;0;;4;3;0,0,0;,4;0,0,0,0;,4;0,0,0,0;,3;0,0,0;;}}"),
              kFails);
    EXPECT_EQ(loader.Triangulate(), 1) << "one names vertex 9";
    EXPECT_EQ(textOf(*loader.m_Meshes[0]), kQuadVertices + "0 1 2 0 1 2 2 3 0 3 0 1 2 3 0");
}

TEST(VX_GLMeshXLoader, GoesAsDeepAsAFile) {
    VX_GLMeshXLoader loader;
    const std::string open(1000000, '{');
    EXPECT_EQ(loaded(loader, "Mesh{0;0;" + open), ":");
    EXPECT_EQ(loaded(loader, "template T " + open), ":");
}

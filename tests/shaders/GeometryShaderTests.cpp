// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_OpenGL64/shaders/private/GeometryDialect.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/GLTest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>

namespace {

constexpr int Side = 16;

/// Gives every input of the dialect a value of its own.
const char* const kAllOutputs = R"(#version 120
varying vec4 tint;
void main() {
    gl_Position = gl_ClipVertex = gl_Vertex;
    tint = gl_FrontColor = gl_Color;
    gl_BackColor = vec4(1.0) - gl_Color + vec4(0, 0, 0, 1);
    gl_FrontSecondaryColor = gl_Color.gbra;
    gl_BackSecondaryColor = vec4(1.0) - gl_Color.gbra;
    gl_FogFragCoord = gl_Vertex.x;
    gl_PointSize = gl_Vertex.y;
    gl_TexCoord[0] = gl_Color;
    gl_TexCoord[1] = gl_Color.brga;
    gl_TexCoord[2] = gl_BackColor;
})";
const char* const kColor = "void main() { gl_FragColor = gl_Color; }";
const char* const kShade = "varying vec4 shade; void main() { gl_FragColor = shade; }";

/// Bit 2 is red, bit 0 blue.
const std::string kLetters = ".BGCRMYW";

std::string read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A row of letters for each row of pixels, the top row first; "?" for a colour without a letter.
std::string shownPicture() {
    std::string rows;
    for (int i = 0; i < Side * Side; ++i) {
        const unsigned pixel = pixelAt(i % Side, Side - 1 - i / Side) >> 8;
        std::size_t letter = 0;
        for (const unsigned channel : {pixel >> 16, pixel >> 8 & 255, pixel & 255})
            letter = channel % 255 ? 8 : letter * 2 + (channel != 0);
        rows += letter < 8 ? kLetters[letter] : '?';
        rows += i % Side == Side - 1 ? "\n" : "";
    }
    return rows;
}

/// What is drawn, and what is to be seen: a line with the primitive type that is drawn and the three
/// parameters, the vertices, an empty line, the picture.
struct Scene {
    explicit Scene(const std::string& text) {
        const std::map<std::string, GLenum> types{{"GL_POINTS", GL_POINTS},
                                                  {"GL_LINES", GL_LINES},
                                                  {"GL_LINE_STRIP", GL_LINE_STRIP},
                                                  {"GL_TRIANGLES", GL_TRIANGLES},
                                                  {"GL_TRIANGLE_STRIP", GL_TRIANGLE_STRIP},
                                                  {"GL_QUADS", GL_QUADS},
                                                  {"GL_LINES_ADJACENCY", GL_LINES_ADJACENCY},
                                                  {"GL_TRIANGLES_ADJACENCY", GL_TRIANGLES_ADJACENCY}};
        std::istringstream head(text.substr(0, text.find("\n\n")));
        std::string names[3];
        head >> names[0] >> names[1] >> names[2] >> verticesOut;
        drawn = types.at(names[0]);
        inputType = int(types.at(names[1]));
        outputType = int(types.at(names[2]));
        for (Corner corner; head >> corner.x >> corner.y >> corner.letter;)
            corners.push_back(corner);
        picture = text.substr(text.find("\n\n") + 2);
    }
    void draw() const {
        clearTo(0, 0, 0);
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(0, Side, 0, Side, -1, 1);
        glBegin(drawn);
        for (const Corner& each : corners) {
            const auto bits = kLetters.find(each.letter);
            glColor3f(float(bits >> 2), float(bits >> 1 & 1), float(bits & 1));
            glVertex2f(each.x, each.y);
        }
        glEnd();
    }

    struct Corner {
        float x, y;
        char letter;
    };
    GLenum drawn;
    int inputType, outputType, verticesOut;
    std::vector<Corner> corners;
    std::string picture;
};

/// A program with the geometry shader of a text.
struct Stages {
    explicit Stages(const std::string& text) : compiled(geometry.loadAndCompile(text.c_str())) {
        EXPECT_TRUE(vertex.loadAndCompile(kAllOutputs));
        EXPECT_TRUE(fragment.loadAndCompile(text.find("vec4 shade") == std::string::npos ? kColor : kShade));
    }
    bool link(int inputType, int outputType, int verticesOut) {
        return program.attachShader(&vertex, &fragment, true) &&
               program.attachGeometryShader(&geometry, inputType, outputType, verticesOut);
    }

    VX_VertexShader vertex;
    VX_FragmentShader fragment;
    VX_GeometryShader geometry;
    bool compiled;
    VX_Program program;
};

} // namespace

TEST(VX_GeometryShader, DrawsTextsOfBothKindsAsWorkedOutByHand) {
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(VX_GEOMETRY_SHADERS)) {
        if (file.path().extension() != ".geom")
            continue;
        ++count;
        SCOPED_TRACE(file.path());
        HeadlessContext gl(Side, Side);
        const Scene scene(read(std::filesystem::path(file.path()).replace_extension(".txt")));
        Stages stages(read(file.path()));
        ASSERT_TRUE(stages.link(scene.inputType, scene.outputType, scene.verticesOut));
        stages.program.activeProgram();
        stages.program.set1f("size", 2);
        stages.program.set1i("one", 1);
        scene.draw();
        EXPECT_EQ(shownPicture(), scene.picture);
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    }
    EXPECT_EQ(count, 13);
}

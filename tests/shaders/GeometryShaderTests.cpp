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
varying vec2 size;
void main() {
    gl_Position = gl_ClipVertex = gl_Vertex;
    tint = gl_FrontColor = gl_Color;
    gl_BackColor = vec4(1.0) - gl_Color + vec4(0, 0, 0, 1);
    gl_FrontSecondaryColor = gl_Color.gbra;
    gl_BackSecondaryColor = vec4(1.0) - gl_Color.gbra;
    gl_FogFragCoord = gl_Vertex.x;
    gl_PointSize = gl_Vertex.y;
    gl_TexCoord[0] = gl_Color;
    size = vec2(4);
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

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t place = 0; (place = text.find(what, place)) != std::string::npos; place += with.size())
        text.replace(place, what.size(), with);
    return text;
}

constexpr vx::GeometryLayout kTriangles{GL_TRIANGLES, GL_TRIANGLE_STRIP, 3};
const std::string kDialect = "void main() { gl_Position = gl_PositionIn[2]; EmitVertex(); }";
std::string s_Sources;
std::vector<int> s_Parameters;

} // namespace

TEST(GeometryDialect, BecomesWhatIsWrittenBesideIt) {
    std::string cases = replaced(read(VX_GEOMETRY_SHADERS "/../dialect.txt"), "\\r\n", "\r\n"), common;
    for (std::size_t end; cases.find("### ") == 0; cases.erase(0, end)) {
        end = std::min(cases.find("\n### ", 1), cases.size() - 1) + 1;
        const std::size_t head = cases.find('\n') + 1, arrow = cases.find("\n=>\n");
        if (arrow > end) {
            common = cases.substr(head, end - head);
            continue;
        }
        const std::string text = cases.substr(head, arrow + 1 - head),
                          expected = replaced(cases.substr(arrow + 4, end - arrow - 4), "@\n", common),
                          result = vx::adaptGeometryShader(text, kTriangles);
        EXPECT_EQ(result, expected) << cases.substr(0, head);
        EXPECT_EQ(vx::adaptGeometryShader(result, kTriangles), result) << "now it has a layout";
    }
    EXPECT_TRUE(cases.empty()) << cases;
    EXPECT_EQ(vx::adaptGeometryShader("", kTriangles).find("#version 150 compatibility\n"), 0u);
}

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
        stages.program.set1i("one", 1);
        stages.program.set1i("two", 2);
        scene.draw();
        EXPECT_EQ(shownPicture(), scene.picture);
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    }
    EXPECT_EQ(count, 13);
}

TEST(VX_GeometryShader, HasAShaderForEachSetOfParameters) {
    HeadlessContext gl(Side, Side);
    auto shader = std::make_unique<VX_GeometryShader>();
    ASSERT_TRUE(shader->loadAndCompile(R"(void main() {
    for (int i = 0; i < gl_VerticesIn; ++i) {
        gl_Position = gl_ModelViewProjectionMatrix * gl_PositionIn[i];
        gl_FrontColor = gl_FrontColorIn[gl_VerticesIn - 1];
        EmitVertex();
    }
})"));
    Stages stages("");
    const auto linked = [&](VX_Program& program, int inputType, int outputType, int verticesOut) {
        EXPECT_TRUE(program.attachShader(&stages.vertex, &stages.fragment, true));
        EXPECT_TRUE(program.attachGeometryShader(shader.get(), inputType, outputType, verticesOut));
        GLuint names[4] = {};
        glGetAttachedShaders(program.m_Program, 4, nullptr, names);
        return names[2];
    };
    auto triangles = std::make_unique<VX_Program>();
    VX_Program points, few, again;
    const GLuint ofTriangles = linked(*triangles, GL_TRIANGLES, GL_TRIANGLE_STRIP, 3),
                 ofPoints = linked(points, GL_TRIANGLES, GL_POINTS, 3),
                 ofFew = linked(few, GL_TRIANGLES, GL_POINTS, 2);
    EXPECT_EQ(linked(again, GL_TRIANGLES, GL_POINTS, 2), ofFew) << "made once";
    const Scene scene("GL_TRIANGLES GL_POINTS GL_POINTS 0\n1.25 1.25 R\n4.5 1.25 R\n1.25 4.5 B\n\n");
    const auto pixelsSetBy = [&](VX_Program& program) {
        program.activeProgram();
        scene.draw();
        program.deactiveProgram();
        const std::string shown = shownPicture();
        return std::count(shown.begin(), shown.end(), 'B');
    };
    EXPECT_EQ(ints(pixelsSetBy(*triangles), pixelsSetBy(points), pixelsSetBy(few)), ints(6, 3, 2));

    triangles.reset();
    EXPECT_TRUE(glIsShader(ofTriangles)) << "for the next program";
    const GLuint own = shader->shader();
    shader->freeShader();
    EXPECT_FALSE(glIsShader(ofTriangles) || glIsShader(own));
    VX_Program last;
    last.attachShader(&stages.vertex, nullptr, true);
    last.attachGeometryShader(shader.get(), GL_TRIANGLES, GL_POINTS, 3);
    EXPECT_EQ(glGetError(), GLenum(GL_INVALID_VALUE)) << "there is no shader to attach";
    EXPECT_TRUE(shader->loadAndCompile(kDialect.c_str()));
    const GLuint former = linked(last, GL_TRIANGLES, GL_POINTS, 3);
    EXPECT_TRUE(shader->loadAndCompile(kDialect.c_str()));
    EXPECT_NE(linked(last, GL_TRIANGLES, GL_POINTS, 3), former) << "made of another text";
    shader.reset();
    EXPECT_TRUE(glIsShader(ofPoints)) << "its program lives";
    EXPECT_EQ(pixelsSetBy(points), 3);
    points.freeProgram();
    few.freeProgram();
    EXPECT_TRUE(glIsShader(ofFew)) << "another program lives";
    again.freeProgram();
    EXPECT_FALSE(glIsShader(ofPoints) || glIsShader(ofFew));
}

TEST(VX_GeometryShader, TellsWhatDependsOnTheParametersWithTheLink) {
    HeadlessContext gl(Side, Side);
    const std::string head = "// one\r\n#version 120\r\n#extension GL_EXT_geometry_shader4 : enable\r\n",
                      sized = "varying in vec4 tint[3]; float three[3] = float[gl_VerticesIn](1., 1., 1.);";
    const struct {
        std::string text;
        int inputType, outputType, verticesOut;
        const char* failure; // how it begins
    } rows[] = {
        {head + kDialect, GL_TRIANGLES, GL_TRIANGLE_STRIP, 3, ""},
        {head + kDialect, GL_LINES, GL_LINE_STRIP, 3, "0:4("},
        {head + "varying in vec4 tint[];" + replaced(kDialect, "gl_PositionIn[2]", "tint[9]"),
         GL_TRIANGLES_ADJACENCY, GL_POINTS, 1, "0:4("},
        {sized + kDialect, GL_TRIANGLES, GL_POINTS, 1, ""},
        {sized + kDialect, GL_LINES_ADJACENCY, GL_POINTS, 1, "0:1("},
        {kDialect, GL_QUADS, GL_POINTS, 1, "a geometry shader has no input of the primitive type 0x7"},
        {kDialect, GL_TRIANGLES, GL_TRIANGLES, 1, "a geometry shader has no output of the primitive"},
        {kDialect, GL_TRIANGLES, GL_POINTS, 0, "a geometry shader emits at least 1 vertex, not 0"},
        {kDialect, GL_TRIANGLES, GL_POINTS, 1 << 30, "0:"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        LogCollector log;
        Stages stages(row.text);
        EXPECT_TRUE(stages.compiled && stages.geometry.failure().empty());
        const bool isGood = !*row.failure;
        EXPECT_EQ(stages.link(row.inputType, row.outputType, row.verticesOut), isGood);
        EXPECT_EQ(stages.program.m_Program != 0, isGood);
        EXPECT_TRUE(stages.program.failure().starts_with(row.failure)) << stages.program.failure();
        EXPECT_EQ(log.count("Link error: " + std::string(row.failure)), isGood ? 0 : 1);
        EXPECT_TRUE(stages.link(GL_TRIANGLES, GL_POINTS, 3) || &row == rows + 2) << "the next one is heard";
    }
    testing::internal::CaptureStdout();
    Stages broken(head + sized + "\r\n" + kDialect + " nonsense");
    const std::string said = testing::internal::GetCapturedStdout();
    EXPECT_TRUE(said.starts_with("VX_GeometryShader::loadAndCompile Failed: 0:5(")) << said;
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 2) << "one fault: " << said;
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GeometryShader, GoesUntouchedToADriverWithTheExtensionAndNotAtAllToOneWithNone) {
    HeadlessContext gl(Side, Side);
    vx::currentGLCapabilities().geometryShader4 = true;
    const auto source = std::exchange(
        epoxy_glShaderSource, [](GLuint, GLsizei count, const GLchar* const* texts, const GLint* lengths) {
            s_Sources += texts[0] + std::string(count == 1 && !lengths ? "" : "?") + "|";
        });
    const auto parameter = std::exchange(epoxy_glProgramParameteriEXT, [](GLuint, GLenum name, GLint value) {
        s_Parameters.insert(s_Parameters.end(), {int(name), value});
    });
    VX_GeometryShader shader;
    VX_Program program;
    const std::string plain150 = "#version 150\nvoid main() {}";
    for (const std::string& text : {kDialect, plain150}) {
        shader.loadAndCompile(text.c_str());
        program.attachShader(nullptr, nullptr, true);
        program.attachGeometryShader(&shader, GL_QUADS, GL_LINES, 0);
    }
    epoxy_glShaderSource = source;
    epoxy_glProgramParameteriEXT = parameter;
    EXPECT_EQ(s_Sources, kDialect + "|" + plain150 + "|");
    const std::vector<int> once = ints(GL_GEOMETRY_INPUT_TYPE_EXT, GL_QUADS, GL_GEOMETRY_OUTPUT_TYPE_EXT,
                                       GL_LINES, GL_GEOMETRY_VERTICES_OUT_EXT, 0);
    EXPECT_TRUE(s_Parameters.size() == 12 && std::equal(once.begin(), once.end(), s_Parameters.begin()));

    vx::currentGLCapabilities().geometryShader4 = vx::currentGLCapabilities().geometryShaders = false;
    glGetError();
    LogCollector log;
    testing::internal::CaptureStdout();
    Stages stages(kDialect);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "VX_GeometryShader::loadAndCompile Failed: the driver has no geometry shaders\n");
    EXPECT_FALSE(stages.link(GL_TRIANGLES, GL_POINTS, 3));
    EXPECT_EQ(log.count("Link error: the driver has no geometry shaders"), 1);
    EXPECT_EQ(ints(stages.geometry.shader(), stages.program.m_Program, shader.GetMaxVertices(), glGetError()),
              ints(0, 0, 0, GL_NO_ERROR));
}

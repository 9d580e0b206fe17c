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
#include <memory>
#include <sstream>

namespace {

constexpr int Side = 16;
constexpr vx::GeometryLayout kTriangles{GL_TRIANGLES, GL_TRIANGLE_STRIP, 3};
const std::string kLetters = ".BGCRMYW"; // bit 2 is red, bit 0 blue
const std::string kDialect = R"(void main() {
    for (int i = 0; i < gl_VerticesIn; ++i) {
        gl_Position = gl_ModelViewProjectionMatrix * gl_PositionIn[i];
        gl_FrontColor = gl_FrontColorIn[2];
        EmitVertex();
    }
})";

std::string read(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
    for (std::size_t place = 0; (place = text.find(what, place)) != std::string::npos; place += with.size())
        text.replace(place, what.size(), with);
    return text;
}

/// Draws what a text says: the primitive type in its first line, the vertices behind it.
void draw(const std::string& scene) {
    std::istringstream head(scene.substr(0, scene.find("\n\n")));
    GLenum drawn = 0;
    std::string rest;
    std::getline(head >> drawn, rest);
    clearTo(0, 0, 0);
    glLoadIdentity();
    glOrtho(0, Side, 0, Side, -1, 1);
    glBegin(drawn);
    char letter;
    for (float x, y; head >> x >> y >> letter; glVertex2f(x, y)) {
        const auto bits = kLetters.find(letter);
        glColor3f(float(bits >> 2), float(bits >> 1 & 1), float(bits & 1));
    }
    glEnd();
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

/// A program with the geometry shader of a text.
struct Stages {
    explicit Stages(const std::string& text) : compiled(geometry.loadAndCompile(text.c_str())) {
        vertex.loadAndCompile(read(VX_GEOMETRY_SHADERS "/all_outputs.vert").c_str());
        fragment.loadAndCompile(text.find("out vec4 shade") == std::string::npos
                                    ? "void main() { gl_FragColor = gl_Color; }"
                                    : "varying vec4 shade; void main() { gl_FragColor = shade; }");
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

// llvmpipe of Mesa 25 reads elsewhere where an index is not a constant, also in a text that is nobody's
// dialect.
bool takesComputedIndices() {
    HeadlessContext gl(Side, Side);
    Stages stages(R"(#version 150 compatibility
layout(lines) in;
layout(points, max_vertices = 1) out;
uniform int one;
void main() {
    gl_Position = gl_ModelViewProjectionMatrix * gl_in[one].gl_Position;
    gl_FrontColor = gl_in[one].gl_FrontColor;
    EmitVertex();
})");
    if (!stages.link(GL_LINES, GL_POINTS, 1))
        return false;
    glMatrixMode(GL_PROJECTION);
    stages.program.activeProgram();
    stages.program.set1i("one", 1);
    draw("1 2.5 2.5 R 9.5 9.5 G\n\n");
    return pixelAt(9, 9) == 0x00FF00FF;
}

std::string s_Sources;
std::vector<int> s_GeometryParameters;

} // namespace

TEST(GeometryDialect, BecomesWhatIsWrittenBesideIt) {
    std::string cases = replaced(read(VX_GEOMETRY_SHADERS "/../dialect.txt"), "\\r\n", "\r\n"), common;
    for (std::size_t end; cases.starts_with("### "); cases.erase(0, end)) {
        end = std::min(cases.find("\n### "), cases.size() - 1) + 1;
        const std::size_t head = cases.find('\n') + 1, arrow = cases.find("\n=>\n");
        const std::string text = cases.substr(head, arrow + 1 - head),
                          expected = replaced(cases.substr(arrow + 4, end - arrow - 4), "@\n", common),
                          result = vx::adaptGeometryShader(text, kTriangles, 150);
        EXPECT_EQ(result, expected) << cases.substr(0, head);
        EXPECT_EQ(vx::adaptGeometryShader(result, kTriangles, 150), result) << "now it has a layout";
        common = common.empty() ? expected.substr(expected.find('\n') + 1) : common;
        common.resize(std::min(common.size(), common.find("#line")));
    }
    EXPECT_TRUE(cases.empty()) << cases;
}

TEST(VX_GeometryShader, DrawsTextsOfBothKindsAsWorkedOutByHand) {
    int count = 0;
    const bool all = takesComputedIndices();
    for (const auto& file : std::filesystem::directory_iterator(VX_GEOMETRY_SHADERS)) {
        for (const bool isNew : {false, true}) {
            if (file.path().extension() != ".geom")
                continue;
            ++count;
            SCOPED_TRACE(file.path());
            HeadlessContext gl(Side, Side);
            vx::currentGLCapabilities().glsl330 = isNew;
            glMatrixMode(GL_PROJECTION);
            const std::string scene = read(std::filesystem::path(file.path()).replace_extension(".txt"));
            if (!all && scene.find("computed indices") != std::string::npos) {
                std::printf("%s is left out: the driver reads arrays elsewhere\n", file.path().c_str());
                continue;
            }
            int parameters[4] = {};
            std::istringstream words(scene);
            for (int& each : parameters)
                words >> each;
            Stages stages(read(file.path()));
            ASSERT_TRUE(stages.link(parameters[1], parameters[2], parameters[3]));
            stages.program.activeProgram();
            stages.program.set1i("one", 1);
            stages.program.set1i("two", 2);
            draw(scene);
            EXPECT_EQ(shownPicture(), scene.substr(scene.find("\n\n") + 2));
            EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        }
    }
    EXPECT_EQ(count, 2 * 13);
}

TEST(VX_GeometryShader, HasAShaderForEachSetOfParameters) {
    HeadlessContext gl(Side, Side);
    glMatrixMode(GL_PROJECTION);
    Stages stages(kDialect);
    VX_GeometryShader& shader = stages.geometry;
    const auto linked = [&](VX_Program& program, int outputType, int verticesOut) {
        program.attachShader(&stages.vertex, &stages.fragment, true);
        program.attachGeometryShader(&shader, GL_TRIANGLES, outputType, verticesOut);
        GLuint names[4] = {};
        glGetAttachedShaders(program.m_Program, 4, nullptr, names);
        return names[2];
    };
    auto triangles = std::make_unique<VX_Program>();
    VX_Program points, few, again;
    const GLuint ofTriangles = linked(*triangles, GL_TRIANGLE_STRIP, 3),
                 ofPoints = linked(points, GL_POINTS, 3), ofFew = linked(few, GL_POINTS, 2);
    EXPECT_EQ(linked(again, GL_POINTS, 2), ofFew) << "made once";
    const auto pixelsSetBy = [&](VX_Program& program) {
        program.activeProgram();
        draw("4\n1.25 1.25 R\n4.5 1.25 R\n1.25 4.5 B\n\n");
        program.deactiveProgram();
        const std::string shown = shownPicture();
        return std::count(shown.begin(), shown.end(), 'B');
    };
    EXPECT_EQ(ints(pixelsSetBy(*triangles), pixelsSetBy(points), pixelsSetBy(few)), ints(6, 3, 2));

    triangles.reset();
    EXPECT_TRUE(glIsShader(ofTriangles)) << "for the next program";
    const GLuint own = shader.shader();
    shader.freeShader();
    EXPECT_FALSE(glIsShader(ofTriangles) || glIsShader(own));
    linked(again, GL_POINTS, 2);
    EXPECT_EQ(glGetError(), GLenum(GL_INVALID_VALUE)) << "there is no shader to attach";
    EXPECT_EQ(pixelsSetBy(points), 3) << "its program has it";
    points.freeProgram();
    few.freeProgram();
    EXPECT_FALSE(glIsShader(ofPoints) || glIsShader(ofFew));

    shader.loadAndCompile(kDialect.c_str());
    const GLuint former = linked(again, GL_POINTS, 2);
    shader.loadAndCompile(kDialect.c_str());
    EXPECT_NE(linked(few, GL_POINTS, 2), former) << "made of another text";
}

TEST(VX_GeometryShader, TellsWhatDependsOnTheParametersWithTheLink) {
    HeadlessContext gl(Side, Side);
    const std::string head = "// one\r\n#version 120\r\n#extension GL_EXT_geometry_shader4 : enable\r\n",
                      sized = "varying in vec4 tint[3]; float three[3] = float[gl_VerticesIn](1., 1., 1.);";
    const struct {
        std::string text;
        int inputType, outputType, verticesOut;
        std::string failure; // how it begins
    } rows[] = {
        {head + "varying in vec4 tint[];" + replaced(kDialect, "gl_PositionIn[i]", "tint[9]"),
         GL_TRIANGLES_ADJACENCY, GL_POINTS, 1, "0:6("},
        {head + kDialect, GL_TRIANGLES, GL_TRIANGLE_STRIP, 3, ""},
        {head + kDialect, GL_LINES, GL_LINE_STRIP, 3, "0:7("},
        {sized + kDialect, GL_TRIANGLES, GL_POINTS, 1, ""},
        {sized + kDialect, GL_LINES_ADJACENCY, GL_POINTS, 1, "0:1("},
        {kDialect, GL_QUADS, GL_POINTS, 1, "a geometry shader has no input of the primitive type 0x7"},
        {kDialect, GL_TRIANGLES, GL_TRIANGLES, 1,
         "a geometry shader has no output of the primitive type 0x4"},
        {kDialect, GL_TRIANGLES, GL_POINTS, 0, "a geometry shader emits at least 1 vertex, not 0"},
        {kDialect, GL_TRIANGLES, GL_POINTS, 1 << 30, "0:"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        LogCollector log;
        Stages stages(row.text);
        EXPECT_TRUE(stages.compiled && stages.geometry.failure().empty());
        const bool isGood = row.failure.empty();
        EXPECT_EQ(stages.link(row.inputType, row.outputType, row.verticesOut), isGood);
        EXPECT_EQ(stages.program.m_Program != 0, isGood);
        EXPECT_TRUE(stages.program.failure().starts_with(row.failure)) << stages.program.failure();
        EXPECT_EQ(log.count("Link error: " + row.failure), isGood ? 0 : 1);
        EXPECT_TRUE(stages.link(GL_TRIANGLES, GL_POINTS, 3) || &row == rows) << "the next one is heard";
    }
    for (const char* fault : {"void main() { nonsense; }", "#nonsense"}) {
        if (*fault == '#' && !vx::currentGLCapabilities().glsl330)
            continue; // Mesa counts that line one short
        testing::internal::CaptureStdout();
        Stages broken(head + sized + "\r\n" + fault + "\r\n");
        const std::string said = testing::internal::GetCapturedStdout();
        EXPECT_TRUE(said.starts_with("VX_GeometryShader::loadAndCompile Failed: 0:5(")) << said;
        EXPECT_LE(std::count(said.begin(), said.end(), '\n'), 3) << "one fault: " << said;
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GeometryShader, GoesUntouchedToADriverWithTheExtensionAndNotAtAllToOneWithNone) {
    HeadlessContext gl(Side, Side);
    vx::GLCapabilities& driver = vx::currentGLCapabilities();
    driver.geometryShader4 = true;
    const auto source = std::exchange(epoxy_glShaderSource, [](GLuint, GLsizei, const GLchar* const* texts,
                                                               const GLint*) { s_Sources += texts[0]; });
    const auto parameter = std::exchange(epoxy_glProgramParameteriEXT, [](GLuint, GLenum name, GLint value) {
        s_GeometryParameters.insert(s_GeometryParameters.end(), {int(name), value});
    });
    Stages stages(kDialect);
    const std::string sources = s_Sources;
    stages.link(GL_QUADS, GL_LINES, 0);
    epoxy_glShaderSource = source;
    epoxy_glProgramParameteriEXT = parameter;
    EXPECT_TRUE(sources.starts_with(kDialect + "// Gives")) << "the vertex shader's text is next";
    EXPECT_EQ(s_Sources, sources) << "there is but one";
    EXPECT_EQ(s_GeometryParameters, ints(GL_GEOMETRY_INPUT_TYPE_EXT, GL_QUADS, GL_GEOMETRY_OUTPUT_TYPE_EXT,
                                         GL_LINES, GL_GEOMETRY_VERTICES_OUT_EXT, 0));

    driver.geometryShader4 = driver.geometryShaders = false;
    glGetError();
    LogCollector log;
    testing::internal::CaptureStdout();
    Stages none(kDialect);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "VX_GeometryShader::loadAndCompile Failed: the driver has no geometry shaders\n");
    EXPECT_FALSE(none.link(GL_TRIANGLES, GL_POINTS, 3));
    EXPECT_EQ(log.count("Link error: the driver has no geometry shaders"), 1);
    EXPECT_EQ(
        ints(none.geometry.shader(), none.program.m_Program, none.geometry.GetMaxVertices(), glGetError()),
        ints(0, 0, 0, GL_NO_ERROR));
}

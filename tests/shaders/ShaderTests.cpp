// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/shaders/ShaderTexts.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/LogCollector.h>
#include <tests/support/Pixels.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <functional>

using namespace vx::test;
using Lines = GLRecorder::Lines;
using Values = std::vector<float>;

namespace {

const char* const kUniforms = R"(
uniform float f1, f1v[2];
uniform vec2 f2, f2v[2];
uniform vec3 f3, f3v[2];
uniform vec4 f4, f4v[2];
uniform int i1;
uniform mat3 m3;
uniform mat4 m4;
void main() {
    gl_FragColor = gl_Color + f1 + f1v[0] + f1v[1] + f2.xyxy + f2v[1].xyxy + f3.xyzx + f3v[1].xyzx + f4 + f4v[1]
        + float(i1) + m3[2].xyzx + m4[3];
})";

int parameterOf(const VX_Program& program, GLenum name) {
    int value = 0;
    glGetProgramiv(program.m_Program, name, &value);
    return value;
}

/// Compiles a good, a broken and a good text again; says what a failure wrote to the log or to the output.
template <class Shader>
std::string checkLifecycle(GLenum type, const char* good) {
    LogCollector log;
    GLRecorder recorder;
    testing::internal::CaptureStdout();
    unsigned first = 0, second = 0;
    {
        Shader shader;
        EXPECT_TRUE(shader.loadAndCompile(good));
        first = shader.shader();
        int made = 0;
        glGetShaderiv(first, GL_SHADER_TYPE, &made);
        EXPECT_EQ(GLenum(made), type);
        EXPECT_FALSE(shader.loadAndCompile("void main() { nonsense }"));
        EXPECT_EQ(shader.shader(), 0u);
        EXPECT_TRUE(glIsShader(first)) << "the shader held before is left alive";
        EXPECT_EQ(recorder.count("glCreateShader") - recorder.count("glDeleteShader"), 1);
        EXPECT_TRUE(shader.loadAndCompile(good));
        shader.freeShader();
        EXPECT_EQ(shader.shader(), 0u);
        EXPECT_EQ(recorder.count("glCreateShader") - recorder.count("glDeleteShader"), 1);
        EXPECT_TRUE(shader.loadAndCompile(good));
        second = shader.shader();
    }
    EXPECT_FALSE(glIsShader(second)) << "it ends with its object";
    glDeleteShader(first);
    const std::string printed = testing::internal::GetCapturedStdout();
    return log.lines.empty() ? "out: " + printed : "log: " + log.lines[0];
}

} // namespace

TEST(Shaders, LiveWithTheirObjectAndReportEachInItsOwnWay) {
    HeadlessContext gl(8, 8);
    const std::pair<std::string, std::string> reports[] = {
        {"log: VX_Vertex", checkLifecycle<VX_VertexShader>(GL_VERTEX_SHADER, kVertex)},
        {"log: VX_Fragment", checkLifecycle<VX_FragmentShader>(GL_FRAGMENT_SHADER, kUniforms)},
        {"out: VX_Geometry", checkLifecycle<VX_GeometryShader>(GL_GEOMETRY_SHADER_EXT, kGeometry)}};
    for (const auto& [start, report] : reports) {
        const std::string text = start + "Shader::loadAndCompile Failed: ";
        EXPECT_TRUE(report.starts_with(text)) << report;
        EXPECT_GT(report.size(), text.size() + 1) << "the driver's words follow";
    }
    EXPECT_EQ(reports[2].second.back(), '\n');
    EXPECT_EQ(ints(VX_GeometryShader().GetMaxVertices()), stateOf(GL_MAX_GEOMETRY_OUTPUT_VERTICES_EXT));
}

TEST(VX_Program, AttachesLinksAndStartsAfresh) {
    HeadlessContext gl(8, 8);
    VX_VertexShader vertex;
    VX_FragmentShader fragment;
    ASSERT_TRUE(vertex.loadAndCompile(kVertex) && fragment.loadAndCompile(kUniforms));
    auto* program = new VX_Program;
    ASSERT_TRUE(program->attachShader(&vertex, &fragment, false));
    EXPECT_EQ(ints(parameterOf(*program, GL_ATTACHED_SHADERS), parameterOf(*program, GL_LINK_STATUS)),
              ints(2, 1));
    const unsigned first = program->m_Program;
    ASSERT_TRUE(program->attachShader(nullptr, &fragment, true));
    EXPECT_FALSE(glIsProgram(first));
    EXPECT_EQ(ints(parameterOf(*program, GL_ATTACHED_SHADERS), parameterOf(*program, GL_LINK_STATUS)),
              ints(1, 0));
    ASSERT_TRUE(program->attachShader(&vertex, nullptr, false));
    EXPECT_EQ(ints(parameterOf(*program, GL_ATTACHED_SHADERS), parameterOf(*program, GL_LINK_STATUS)),
              ints(1, 1));
    const unsigned last = program->m_Program;
    program->activeProgram();
    EXPECT_EQ(stateOf(GL_CURRENT_PROGRAM), ints(last));
    VX_Program().deactiveProgram();
    EXPECT_EQ(stateOf(GL_CURRENT_PROGRAM), ints(0)) << "whichever is current";
    delete program;
    EXPECT_FALSE(glIsProgram(last));
    VX_Program empty;
    const bool linked = empty.attachShader(nullptr, nullptr, false);
    EXPECT_EQ(linked, empty.m_Program != 0) << "an empty program is linked, and GL judges";
}

TEST(VX_Program, IsLostWithAFailedLinkAndItsShadersAreNot) {
    HeadlessContext gl(8, 8);
    VX_VertexShader vertex;
    VX_FragmentShader fragment;
    VX_GeometryShader geometry;
    ASSERT_TRUE(vertex.loadAndCompile(kVaryingOfTwo) && fragment.loadAndCompile(kVaryingOfFour));
    GLRecorder recorder;
    LogCollector log;
    VX_Program program;
    EXPECT_FALSE(program.attachShader(&vertex, &fragment, false));
    EXPECT_EQ(program.m_Program, 0u);
    EXPECT_EQ(recorder.count("glDeleteProgram"), 1);
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_TRUE(log.lines[0].starts_with("Link error: ") && log.lines[0].size() > 12u) << log.lines[0];
    EXPECT_TRUE(glIsShader(vertex.shader()) && glIsShader(fragment.shader()));

    EXPECT_FALSE(program.attachGeometryShader(&geometry, GL_POINTS, GL_TRIANGLE_STRIP, 4)) << "no program";
    EXPECT_TRUE(program.attachShader(&vertex, &fragment, true)) << "no link yet";
    EXPECT_FALSE(program.attachGeometryShader(nullptr, GL_POINTS, GL_TRIANGLE_STRIP, 4));
    EXPECT_EQ(log.lines.size(), 1u);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    program.freeProgram();
    EXPECT_FALSE(program.execLink());
    EXPECT_EQ(log.lines.back(), "Link error: ") << "there is no program to ask";
}

TEST(VX_Program, SetsTheParametersOfAGeometryShaderWhereTheDriverHasThem) {
    HeadlessContext gl(8, 8);
    VX_VertexShader vertex;
    VX_GeometryShader geometry;
    ASSERT_TRUE(vertex.loadAndCompile(kVertex) && geometry.loadAndCompile(kGeometry));
    VX_Program program;
    for (const bool known : {true, false}) {
        GLRecorder recorder;
        vx::currentGLCapabilities().geometryShader4 = known;
        ASSERT_TRUE(program.attachShader(&vertex, nullptr, true));
        const unsigned name = program.m_Program;
        recorder.take();
        EXPECT_TRUE(program.attachGeometryShader(&geometry, GL_POINTS, GL_TRIANGLE_STRIP, 4));
        Lines expected;
        if (known)
            expected = {call("glProgramParameteriEXT", name, GL_GEOMETRY_INPUT_TYPE_EXT, GL_POINTS),
                        call("glProgramParameteriEXT", name, GL_GEOMETRY_OUTPUT_TYPE_EXT, GL_TRIANGLE_STRIP),
                        call("glProgramParameteriEXT", name, GL_GEOMETRY_VERTICES_OUT_EXT, 4)};
        expected.push_back(call("glLinkProgram", name));
        EXPECT_EQ(recorder.take(), expected);
    }
    program.activeProgram();
    glBegin(GL_POINTS);
    glVertex2f(0, 0);
    glEnd();
    EXPECT_EQ(pixelAt(7, 0) >> 16 & 255, 255u) << "the point became a square over the whole window";
}

TEST(VX_Program, PassesUniformsAndAttributesOnByName) {
    HeadlessContext gl(8, 8);
    VX_VertexShader vertex;
    VX_FragmentShader fragment;
    VX_Program program;
    ASSERT_TRUE(vertex.loadAndCompile(kVertex) && fragment.loadAndCompile(kUniforms));
    ASSERT_TRUE(program.attachShader(&vertex, &fragment, false));
    const float values[16] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    program.activeProgram();
    const struct {
        std::function<void()> set;
        const char* uniform; // and what it then holds
        Values held;
    } cases[] = {
        {[&] { program.set1f("f1", 1); }, "f1", {1}},
        {[&] { program.set2f("f2", 1, 2); }, "f2", {1, 2}},
        {[&] { program.set3f("f3", 1, 2, 3); }, "f3", {1, 2, 3}},
        {[&] { program.set4f("f4", 1, 2, 3, 4); }, "f4", {1, 2, 3, 4}},
        {[&] { program.set1i("i1", 7); }, "i1", {7}},
        {[&] { program.set1fv("f1v", 2, values); }, "f1v[1]", {2}},
        {[&] { program.set2fv("f2v", 2, values); }, "f2v[1]", {3, 4}},
        {[&] { program.set3fv("f3v", 2, values); }, "f3v[1]", {4, 5, 6}},
        {[&] { program.set4fv("f4v", 2, values); }, "f4v[1]", {5, 6, 7, 8}},
        {[&] { program.setMatrix3fv("m3", 1, 1, values); }, "m3", {1, 4, 7, 2, 5, 8, 3, 6, 9}},
        {[&] { program.setMatrix4fv("m4", 1, 0, values); }, "m4", Values(values, values + 16)},
        {[&] { program.set1f("none", 1); }, "f1", {1}},
    };
    for (const auto& each : cases) {
        each.set();
        Values held(16);
        glGetUniformfv(program.m_Program, glGetUniformLocation(program.m_Program, each.uniform), held.data());
        held.resize(each.held.size());
        EXPECT_EQ(held, each.held) << each.uniform;
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << "types fit, and unknown names are ignored";

    const int location = program.getAttribLocation("tangent");
    EXPECT_EQ(location, glGetAttribLocation(program.m_Program, "tangent"));
    EXPECT_EQ(program.getAttribLocation("none"), -1);
    float current[4] = {};
    program.setVertexAttrib3fv("tangent", values);
    glGetVertexAttribfv(unsigned(location), GL_CURRENT_VERTEX_ATTRIB, current);
    EXPECT_EQ(Values(current, current + 3), (Values{1, 2, 3}));
    program.setVertexAttrib3fv(unsigned(location), values + 3);
    glGetVertexAttribfv(unsigned(location), GL_CURRENT_VERTEX_ATTRIB, current);
    EXPECT_EQ(Values(current, current + 3), (Values{4, 5, 6}));
    program.setVertexAttrib3fv("none", values);
    EXPECT_EQ(glGetError(), GLenum(GL_INVALID_VALUE)) << "-1 goes to GL as the index";
}

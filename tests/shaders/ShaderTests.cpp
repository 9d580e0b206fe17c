// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/LogCollector.h>
#include <tests/support/Pixels.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <functional>

using namespace vx::test;
using Lines = GLRecorder::Lines;

namespace {

const char* const kVertex = R"(
attribute vec3 tangent;
void main() { gl_Position = gl_Vertex; gl_FrontColor = vec4(tangent, 1.0); })";
const char* const kFragment = R"(
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
const char* const kGeometry = R"(#version 150 compatibility
layout(points) in;
layout(triangle_strip, max_vertices = 4) out;
void main() {
    for (int corner = 0; corner < 4; ++corner) {
        gl_Position = vec4(corner % 2 * 2 - 1, corner / 2 * 2 - 1, 0, 1);
        gl_FrontColor = vec4(0, 1, 0, 1);
        EmitVertex();
    }
})";
const char* const kBroken = "void main() { nonsense }";

// Compiles a good, a broken and a good text again; the object is left empty.
template <class Shader>
void checkLifecycle(GLRecorder& recorder, GLenum type, const char* good) {
    Shader shader;
    EXPECT_EQ(recorder.take(), Lines());
    ASSERT_TRUE(shader.loadAndCompile(good));
    const unsigned first = shader.shader();
    EXPECT_EQ(recorder.take(),
              (Lines{call("glCreateShader", type), call("glShaderSource", first, 1, good, 0),
                     call("glCompileShader", first), call("glGetShaderiv", first, GL_COMPILE_STATUS, out)}));
    EXPECT_FALSE(shader.loadAndCompile(kBroken));
    EXPECT_EQ(shader.shader(), 0u);
    EXPECT_TRUE(glIsShader(first)) << "the shader held before is left alive";
    const Lines failed = recorder.take();
    ASSERT_EQ(failed.size(), 6u);
    const unsigned second = first + 1;
    EXPECT_EQ(failed[4], call("glGetShaderInfoLog", second, 4096, 0, out));
    EXPECT_EQ(failed[5], call("glDeleteShader", second));
    EXPECT_FALSE(glIsShader(second));
    shader.freeShader();
    EXPECT_EQ(recorder.take(), Lines());

    ASSERT_TRUE(shader.loadAndCompile(good));
    recorder.take();
    const unsigned third = shader.shader();
    shader.freeShader();
    EXPECT_EQ(recorder.take(), Lines{call("glDeleteShader", third)});
    glDeleteShader(first);
    recorder.take();
}

} // namespace

TEST(Shaders, ReportTheirFailuresEachInItsOwnWay) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    LogCollector log;
    checkLifecycle<VX_VertexShader>(recorder, GL_VERTEX_SHADER, kVertex);
    checkLifecycle<VX_FragmentShader>(recorder, GL_FRAGMENT_SHADER, kFragment);
    testing::internal::CaptureStdout();
    checkLifecycle<VX_GeometryShader>(recorder, GL_GEOMETRY_SHADER_EXT, kGeometry);
    const std::string printed = testing::internal::GetCapturedStdout();

    ASSERT_EQ(log.lines.size(), 2u);
    EXPECT_TRUE(log.lines[0].starts_with("VX_VertexShader::loadAndCompile Failed: 0:")) << log.lines[0];
    EXPECT_TRUE(log.lines[1].starts_with("VX_FragmentShader::loadAndCompile Failed: 0:")) << log.lines[1];
    EXPECT_TRUE(printed.starts_with("VX_GeometryShader::loadAndCompile Failed: 0:")) << printed;
    EXPECT_TRUE(printed.ends_with("\n"));
    EXPECT_GE(VX_GeometryShader().GetMaxVertices(), 64);
}

TEST(VX_Program, AttachesLinksAndStartsAfresh) {
    HeadlessContext gl(8, 8);
    VX_VertexShader vertex;
    VX_FragmentShader fragment;
    ASSERT_TRUE(vertex.loadAndCompile(kVertex));
    ASSERT_TRUE(fragment.loadAndCompile(kFragment));
    GLRecorder recorder;
    LogCollector log;
    {
        VX_Program program;
        ASSERT_TRUE(program.attachShader(&vertex, &fragment, false));
        const unsigned first = program.m_Program;
        EXPECT_EQ(recorder.take(),
                  (Lines{call("glCreateProgram"), call("glAttachShader", first, vertex.shader()),
                         call("glAttachShader", first, fragment.shader()), call("glLinkProgram", first),
                         call("glGetProgramiv", first, GL_LINK_STATUS, out)}));
        ASSERT_TRUE(program.attachShader(&vertex, nullptr, true));
        EXPECT_EQ(recorder.take(), (Lines{call("glDeleteProgram", first), call("glCreateProgram"),
                                          call("glAttachShader", program.m_Program, vertex.shader())}));
        ASSERT_TRUE(program.execLink());
        recorder.take();
        program.deactiveProgram();
        program.activeProgram();
        EXPECT_EQ(recorder.take(), (Lines{call("glUseProgram", 0), call("glUseProgram", program.m_Program)}));
        program.deactiveProgram();
    }
    EXPECT_EQ(countOf(recorder.take(), "glDeleteProgram"), 1);
    VX_Program empty;
    const bool linked = empty.attachShader(nullptr, nullptr, false);
    EXPECT_EQ(linked, empty.m_Program != 0) << "an empty program is linked, and GL judges";
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_Program, IsLostWithAFailedLinkAndItsShadersAreNot) {
    HeadlessContext gl(8, 8);
    VX_VertexShader vertex;
    VX_FragmentShader fragment;
    ASSERT_TRUE(
        vertex.loadAndCompile("varying vec2 v; void main() { v = vec2(0); gl_Position = gl_Vertex; }"));
    ASSERT_TRUE(fragment.loadAndCompile("varying vec4 v; void main() { gl_FragColor = v; }"));
    GLRecorder recorder;
    LogCollector log;
    VX_Program program;
    EXPECT_FALSE(program.attachShader(&vertex, &fragment, false));
    EXPECT_EQ(program.m_Program, 0u);
    ASSERT_EQ(log.lines.size(), 1u);
    EXPECT_TRUE(log.lines[0].starts_with("Link error: error:")) << log.lines[0];
    const Lines lines = recorder.take();
    ASSERT_EQ(lines.size(), 7u);
    EXPECT_TRUE(lines[5].starts_with("glGetProgramInfoLog("));
    EXPECT_TRUE(lines[6].starts_with("glDeleteProgram("));
    EXPECT_TRUE(glIsShader(vertex.shader()) && glIsShader(fragment.shader()));

    VX_GeometryShader geometry;
    EXPECT_FALSE(program.attachGeometryShader(&geometry, GL_POINTS, GL_TRIANGLE_STRIP, 4));
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
    ASSERT_TRUE(vertex.loadAndCompile("void main() { gl_Position = gl_Vertex; }"));
    ASSERT_TRUE(geometry.loadAndCompile(kGeometry));
    GLRecorder recorder;
    VX_Program program;
    for (const bool known : {true, false}) {
        vx::currentGLCapabilities().geometryShader4 = known;
        ASSERT_TRUE(program.attachShader(&vertex, nullptr, true));
        const unsigned name = program.m_Program;
        recorder.take();
        EXPECT_TRUE(program.attachGeometryShader(&geometry, GL_POINTS, GL_TRIANGLE_STRIP, 4));
        Lines expected{call("glAttachShader", name, geometry.shader())};
        if (known) {
            expected.push_back(call("glProgramParameteriEXT", name, GL_GEOMETRY_INPUT_TYPE_EXT, GL_POINTS));
            expected.push_back(
                call("glProgramParameteriEXT", name, GL_GEOMETRY_OUTPUT_TYPE_EXT, GL_TRIANGLE_STRIP));
            expected.push_back(call("glProgramParameteriEXT", name, GL_GEOMETRY_VERTICES_OUT_EXT, 4));
        }
        expected.push_back(call("glLinkProgram", name));
        expected.push_back(call("glGetProgramiv", name, GL_LINK_STATUS, out));
        EXPECT_EQ(recorder.take(), expected);
    }
    glViewport(0, 0, 8, 8);
    program.activeProgram();
    glBegin(GL_POINTS);
    glVertex2f(0, 0);
    glEnd();
    program.deactiveProgram();
    EXPECT_EQ(pixelAt(7, 0) >> 16 & 255, 255u) << "the point became a square over the whole window";
}

TEST(VX_Program, PassesUniformsAndAttributesOnByName) {
    HeadlessContext gl(8, 8);
    VX_VertexShader vertex;
    VX_FragmentShader fragment;
    VX_Program program;
    ASSERT_TRUE(vertex.loadAndCompile(kVertex) && fragment.loadAndCompile(kFragment));
    ASSERT_TRUE(program.attachShader(&vertex, &fragment, false));
    const unsigned name = program.m_Program;
    const float values[32] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    const std::string at = text(values);
    program.activeProgram();

    const struct {
        const char* uniform;
        std::function<void(const char*)> set;
        std::string call, arguments;
    } cases[] = {
        {"f1", [&](auto n) { program.set1f(n, 1); }, "glUniform1f", "1"},
        {"f2", [&](auto n) { program.set2f(n, 1, 2); }, "glUniform2f", "1, 2"},
        {"f3", [&](auto n) { program.set3f(n, 1, 2, 3); }, "glUniform3f", "1, 2, 3"},
        {"f4", [&](auto n) { program.set4f(n, 1, 2, 3, 4); }, "glUniform4f", "1, 2, 3, 4"},
        {"i1", [&](auto n) { program.set1i(n, 7); }, "glUniform1i", "7"},
        {"f1v", [&](auto n) { program.set1fv(n, 2, values); }, "glUniform1fv", "2, " + at},
        {"f2v", [&](auto n) { program.set2fv(n, 2, values); }, "glUniform2fv", "2, " + at},
        {"f3v", [&](auto n) { program.set3fv(n, 2, values); }, "glUniform3fv", "2, " + at},
        {"f4v", [&](auto n) { program.set4fv(n, 2, values); }, "glUniform4fv", "2, " + at},
        {"m3", [&](auto n) { program.setMatrix3fv(n, 1, 1, values); }, "glUniformMatrix3fv", "1, 1, " + at},
        {"m4", [&](auto n) { program.setMatrix4fv(n, 1, 0, values); }, "glUniformMatrix4fv", "1, 0, " + at},
        {"none", [&](auto n) { program.set1f(n, 1); }, "glUniform1f", "1"},
    };
    for (const auto& each : cases) {
        GLRecorder recorder;
        const std::string location = text(glGetUniformLocation(name, each.uniform));
        recorder.take();
        each.set(each.uniform);
        EXPECT_EQ(recorder.take(), (Lines{call("glGetUniformLocation", name, each.uniform),
                                          each.call + "(" + location + ", " + each.arguments + ")"}));
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR)) << "types fit, and unknown names are ignored";

    const int location = program.getAttribLocation("tangent");
    EXPECT_GE(location, 0);
    EXPECT_EQ(program.getAttribLocation("none"), -1);
    program.setVertexAttrib3fv("tangent", values);
    float current[4] = {};
    glGetVertexAttribfv(unsigned(location), GL_CURRENT_VERTEX_ATTRIB, current);
    EXPECT_EQ(current[2], 3.0f);
    program.setVertexAttrib3fv(unsigned(location), values + 3);
    glGetVertexAttribfv(unsigned(location), GL_CURRENT_VERTEX_ATTRIB, current);
    EXPECT_EQ(current[2], 6.0f);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    program.setVertexAttrib3fv("none", values);
    EXPECT_EQ(glGetError(), GLenum(GL_INVALID_VALUE)) << "-1 goes to GL as the index";
    program.deactiveProgram();
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GeometryShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/LogCollector.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

using namespace vx::test;
using Lines = GLRecorder::Lines;

namespace {

class TargetFilter : public VX_GLFilter {
public:
    TargetFilter() : VX_GLFilter(nullptr) { m_RenderTarget = new VX_GLRenderTarget; }
};

} // namespace

TEST(VX_GLFilter, RebuildsItsTargetWithEachResolution) {
    HeadlessContext gl(8, 8);
    TargetFilter filter;
    EXPECT_EQ(filter.SetResolution(16, 8), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
    const unsigned rectangle = filter.CreateRT(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    const unsigned flat = filter.Create2DRT(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    EXPECT_EQ(filter.GetRTexture(0), rectangle);
    EXPECT_EQ(filter.GetRTexture(1), flat);
    EXPECT_EQ(filter.GetRTexture(-1), 0u);
    EXPECT_EQ(filter.GetRTexture(2), 0u);
    EXPECT_EQ(filter.SetResolution(16, 8), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
    EXPECT_EQ(filter.GetRTexture(0), 0u);
    EXPECT_FALSE(glIsTexture(rectangle));
}

TEST(VX_GLFilter, KeepsOnlyProgramsThatLinkAndDeletesThemInOrder) {
    HeadlessContext gl(8, 8);
    VX_VertexShader vertex;
    VX_FragmentShader mismatched;
    VX_GeometryShader geometry;
    ASSERT_TRUE(
        vertex.loadAndCompile("varying vec2 v; void main() { v = vec2(0); gl_Position = gl_Vertex; }"));
    ASSERT_TRUE(mismatched.loadAndCompile("varying vec4 v; void main() { gl_FragColor = v; }"));
    ASSERT_TRUE(
        geometry.loadAndCompile("#version 150 compatibility\nlayout(points) in;\n"
                                "layout(points, max_vertices = 1) out;\n"
                                "in vec4 v[];\n"
                                "void main() { gl_Position = v[0]; EmitVertex(); }"));
    auto* filter = new TargetFilter;
    LogCollector log;
    EXPECT_EQ(filter->CreateProgram(&vertex, &mismatched, nullptr, 0, 0, 0), nullptr);
    ASSERT_EQ(log.lines.size(), 2u);
    EXPECT_TRUE(log.lines[0].starts_with("Link error: ")) << log.lines[0];
    EXPECT_EQ(log.lines[1], "Failed: CreateProgram");
    EXPECT_EQ(filter->CreateProgram(&vertex, nullptr, &geometry, GL_POINTS, GL_POINTS, 1), nullptr);
    ASSERT_EQ(log.lines.size(), 4u);
    EXPECT_TRUE(log.lines[2].starts_with("Link error: ")) << log.lines[2];
    EXPECT_EQ(log.lines[3], "Failed: CreateProgram because geometry shader wasn't attached");
    EXPECT_TRUE(filter->m_Programs.empty());

    VX_Program* first = filter->CreateProgram(&vertex, nullptr, nullptr, 0, 0, 0);
    VX_Program* second = filter->CreateProgram(nullptr, nullptr, nullptr, 0, 0, 0);
    ASSERT_EQ(filter->m_Programs, (std::vector<VX_Program*>{first, second}));
    filter->m_Programs.insert(filter->m_Programs.begin(), nullptr);
    filter->SetResolution(8, 8);
    const unsigned names[] = {first->m_Program, second->m_Program, filter->m_RenderTarget->m_FrameBuffer};
    GLRecorder recorder;
    delete filter;
    const Lines lines = recorder.take();
    ASSERT_EQ(lines.size(), 4u);
    EXPECT_EQ(lines[0], call("glDeleteProgram", names[0]));
    EXPECT_EQ(lines[1], call("glDeleteProgram", names[1]));
    EXPECT_EQ(lines[3], call("glDeleteFramebuffersEXT", 1, std::vector<unsigned>{names[2]}));
}

TEST(VX_GLFilterDeathTest, EndsWithAMessageWithoutItsRenderTarget) {
    VX_GLFilter filter(nullptr);
    EXPECT_DEATH(filter.Bind(0), "VX_GLFilter::Bind: the filter's m_RenderTarget is null");
    EXPECT_DEATH(filter.SetResolution(8, 8), "VX_GLFilter::SetResolution");
}

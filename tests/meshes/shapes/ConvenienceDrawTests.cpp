// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/Pixels.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace vx::test;
using Draw = VX_GLConvenienceDraw;
using Values = std::vector<float>;

namespace {

/// What a draw finds: its call, and what stands behind the vertex and the texture pointer.
struct Drawn {
    std::string call;
    Values vertices, texCoords;
};

Values behind(GLenum array, GLenum size, GLenum stride, GLenum pointer, int count) {
    void* data = nullptr;
    glGetPointerv(pointer, &data);
    EXPECT_EQ(stateOf(stride), ints(0));
    const auto* first = static_cast<const float*>(data);
    return glIsEnabled(array) ? Values(first, first + stateOf(size)[0] * count) : Values();
}

template <class Action>
Drawn drawnBy(int count, Action draw) {
    GLRecorder recorder;
    Drawn drawn;
    recorder.onCall = [&] {
        drawn.vertices = behind(GL_VERTEX_ARRAY, GL_VERTEX_ARRAY_SIZE, GL_VERTEX_ARRAY_STRIDE,
                                GL_VERTEX_ARRAY_POINTER, count);
        drawn.texCoords = behind(GL_TEXTURE_COORD_ARRAY, GL_TEXTURE_COORD_ARRAY_SIZE,
                                 GL_TEXTURE_COORD_ARRAY_STRIDE, GL_TEXTURE_COORD_ARRAY_POINTER, count);
    };
    draw();
    EXPECT_EQ(stateOf(GL_VERTEX_ARRAY, GL_TEXTURE_COORD_ARRAY), ints(0, 0));
    drawn.call = recorder.take().back();
    return drawn;
}

} // namespace

TEST(VX_GLConvenienceDraw, DrawsLinesAndRectanglesFromClientMemory) {
    HeadlessContext gl(8, 8);
    const CGRect rect = CGRectMake(1, 2, 10, 20);
    const struct {
        GLenum mode;
        int count;
        std::function<void()> draw;
        Values vertices, texCoords;
    } rows[] = {
        {GL_LINES,
         2,
         [] {
             Draw::drawLine(VXVector2{1, 2}, VXVector2{3, 4});
         },
         {1, 2, 3, 4},
         {}},
        {GL_LINES,
         2,
         [] {
             Draw::drawLine(VXVector3{1, 2, 3}, VXVector3{4, 5, 6});
         },
         {1, 2, 3, 4, 5, 6},
         {}},
        {GL_LINE_LOOP, 4, [&] { Draw::drawStrokedRect(rect); }, {1, 2, 11, 2, 11, 22, 1, 22}, {}},
        {GL_TRIANGLE_STRIP,
         4,
         [&] { Draw::drawSolidRect(rect, true); },
         {11, 2, 1, 2, 11, 22, 1, 22},
         {11, 2, 1, 2, 11, 22, 1, 22}},
        {GL_TRIANGLE_STRIP,
         4,
         [&] { Draw::drawSolidRect(rect, false); },
         {11, 2, 1, 2, 11, 22, 1, 22},
         {1, 0, 0, 0, 1, 1, 0, 1}},
    };
    for (const auto& row : rows) {
        const Drawn drawn = drawnBy(row.count, row.draw);
        EXPECT_EQ(drawn.call, call("glDrawArrays", row.mode, 0, row.count));
        EXPECT_EQ(drawn.vertices, row.vertices);
        EXPECT_EQ(drawn.texCoords, row.texCoords);
    }
}

TEST(VX_GLConvenienceDraw, CountsTheSegmentsOfACircle) {
    HeadlessContext gl(8, 8);
    constexpr float infinity = std::numeric_limits<float>::infinity();
    const struct {
        float radius;
        int segments, used;
    } rows[] = {{10, 0, 62}, {0.1f, 0, 2},          {1, -5, 6},       {1, 1, 2},    {1, 2, 2}, {5, 8, 8},
                {-3, 0, 2},  {std::nanf(""), 0, 2}, {infinity, 0, 2}, {1e30f, 0, 2}};
    for (const auto& [radius, segments, used] : rows) {
        const Drawn drawn = drawnBy(1, [&] { Draw::drawSolidCircle({3, 4}, radius, segments); });
        EXPECT_EQ(drawn.call, call("glDrawArrays", GL_TRIANGLE_FAN, 0, used + 2)) << radius;
        EXPECT_EQ(drawn.vertices, (Values{3, 4}));
    }
    const Drawn drawn = drawnBy(6, [] { Draw::drawSolidCircle({3, 4}, 100, 4); });
    const float rim[] = {103, 4, 3, 104, -97, 4, 3, -96, 103, 4};
    for (int i = 0; i < 10; ++i)
        EXPECT_NEAR(drawn.vertices[2 + i], rim[i], 1e-3f) << i;
    EXPECT_LT(drawn.vertices[11], 4.0f - 1e-4f) << "the gap of the short constant";
}

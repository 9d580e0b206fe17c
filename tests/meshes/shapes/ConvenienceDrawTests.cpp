// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <tests/support/GLTest.h>

#include <cmath>
#include <functional>
#include <utility>

using Draw = VX_GLConvenienceDraw;
using Values = std::vector<float>;

namespace {

/// What a draw of a mode finds behind the vertex and the texture pointer, `count` points each.
std::pair<Values, Values> drawnBy(GLenum mode, int count, int points, const std::function<void()>& draw) {
    GLRecorder recorder;
    std::pair<Values, Values> drawn;
    const auto copied = [&](GLenum array, GLenum size, GLenum stride, GLenum pointer) {
        void* data = nullptr;
        glGetPointerv(pointer, &data);
        const auto* first = static_cast<const float*>(data);
        return stateOf(array, stride) == ints(1, 0) ? Values(first, first + stateOf(size)[0] * count)
                                                    : Values();
    };
    recorder.onCall = [&] {
        drawn = {
            copied(GL_VERTEX_ARRAY, GL_VERTEX_ARRAY_SIZE, GL_VERTEX_ARRAY_STRIDE, GL_VERTEX_ARRAY_POINTER),
            copied(GL_TEXTURE_COORD_ARRAY, GL_TEXTURE_COORD_ARRAY_SIZE, GL_TEXTURE_COORD_ARRAY_STRIDE,
                   GL_TEXTURE_COORD_ARRAY_POINTER)};
    };
    draw();
    EXPECT_EQ(stateOf(GL_VERTEX_ARRAY, GL_TEXTURE_COORD_ARRAY), ints(0, 0));
    EXPECT_EQ(recorder.take().back(), call("glDrawArrays", mode, 0, points));
    return drawn;
}

} // namespace

TEST(VX_GLConvenienceDraw, DrawsLinesAndRectanglesFromClientMemory) {
    HeadlessContext gl(8, 8);
    const CGRect rect = CGRectMake(1, 2, 10, 20);
    const Values strip{11, 2, 1, 2, 11, 22, 1, 22}, unit{1, 0, 0, 0, 1, 1, 0, 1};
    const struct {
        GLenum mode;
        int count;
        Values vertices, texCoords;
        std::function<void()> draw;
    } rows[] = {{GL_LINES,
                 2,
                 {1, 2, 3, 4},
                 {},
                 [] {
                     Draw::drawLine(VXVector2{1, 2}, VXVector2{3, 4});
                 }},
                {GL_LINES,
                 2,
                 {1, 2, 3, 4, 5, 6},
                 {},
                 [] {
                     Draw::drawLine({1, 2, 3}, VXVector3{4, 5, 6});
                 }},
                {GL_LINE_LOOP, 4, {1, 2, 11, 2, 11, 22, 1, 22}, {}, [&] { Draw::drawStrokedRect(rect); }},
                {GL_TRIANGLE_STRIP, 4, strip, strip, [&] { Draw::drawSolidRect(rect, true); }},
                {GL_TRIANGLE_STRIP, 4, strip, unit, [&] { Draw::drawSolidRect(rect, false); }}};
    for (const auto& row : rows)
        EXPECT_EQ(drawnBy(row.mode, row.count, row.count, row.draw), std::pair(row.vertices, row.texCoords));
}

TEST(VX_GLConvenienceDraw, CountsTheSegmentsOfACircle) {
    HeadlessContext gl(8, 8);
    const struct {
        float radius;
        int segments, used;
    } rows[] = {{10, 0, 62}, {0.1f, 0, 2}, {1, -5, 6},  {1, 1, 2},
                {5, 8, 8},   {-3, 0, 2},   {NAN, 0, 2}, {1e30f, 0, 2}};
    for (const auto& row : rows)
        drawnBy(GL_TRIANGLE_FAN, 1, row.used + 2, [&] {
            Draw::drawSolidCircle({3, 4}, row.radius, row.segments);
        });
    const auto drawn = drawnBy(GL_TRIANGLE_FAN, 6, 6, [] { Draw::drawSolidCircle({3, 4}, 100, 4); });
    const float points[] = {3, 4, 103, 4, 3, 104, -97, 4, 3, -96, 103, 4};
    for (int i = 0; i < 12; ++i)
        EXPECT_NEAR(drawn.first[std::size_t(i)], points[i], 1e-3f) << i;
    EXPECT_LT(drawn.first[11], 4.0f - 1e-4f) << "the gap of the short constant";
}

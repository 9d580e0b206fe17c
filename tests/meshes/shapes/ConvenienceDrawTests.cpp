// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <tests/support/GLTest.h>

#include <cmath>
#include <limits>

using Draw = VX_GLConvenienceDraw;
using Values = std::vector<float>;

namespace {

/// What a draw finds: its call, and what stands behind the vertex and the texture pointer.
struct Drawn {
    std::string call;
    Values vertices, texCoords;
};

template <class Action>
Drawn drawnBy(int count, Action draw) {
    GLRecorder recorder;
    Drawn drawn;
    const auto copy = [&](Values& values, GLenum array, GLenum size, GLenum stride, GLenum pointer) {
        void* data = nullptr;
        glGetPointerv(pointer, &data);
        const auto* first = static_cast<const float*>(data);
        if (stateOf(array, stride) == ints(1, 0))
            values.assign(first, first + stateOf(size)[0] * count);
    };
    recorder.onCall = [&] {
        copy(drawn.vertices, GL_VERTEX_ARRAY, GL_VERTEX_ARRAY_SIZE, GL_VERTEX_ARRAY_STRIDE,
             GL_VERTEX_ARRAY_POINTER);
        copy(drawn.texCoords, GL_TEXTURE_COORD_ARRAY, GL_TEXTURE_COORD_ARRAY_SIZE,
             GL_TEXTURE_COORD_ARRAY_STRIDE, GL_TEXTURE_COORD_ARRAY_POINTER);
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
    const auto check = [](GLenum mode, int count, const Values& vertices, const Values& texCoords,
                          auto draw) {
        const Drawn drawn = drawnBy(count, draw);
        EXPECT_EQ(drawn.call, call("glDrawArrays", mode, 0, count));
        EXPECT_EQ(drawn.vertices, vertices);
        EXPECT_EQ(drawn.texCoords, texCoords);
    };
    const Values strip{11, 2, 1, 2, 11, 22, 1, 22}, unit{1, 0, 0, 0, 1, 1, 0, 1};
    check(GL_LINES, 2, {1, 2, 3, 4}, {}, [] { Draw::drawLine(VXVector2{1, 2}, VXVector2{3, 4}); });
    check(GL_LINES, 2, {1, 2, 3, 4, 5, 6}, {}, [] { Draw::drawLine({1, 2, 3}, VXVector3{4, 5, 6}); });
    check(GL_LINE_LOOP, 4, {1, 2, 11, 2, 11, 22, 1, 22}, {}, [&] { Draw::drawStrokedRect(rect); });
    check(GL_TRIANGLE_STRIP, 4, strip, strip, [&] { Draw::drawSolidRect(rect, true); });
    check(GL_TRIANGLE_STRIP, 4, strip, unit, [&] { Draw::drawSolidRect(rect, false); });
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

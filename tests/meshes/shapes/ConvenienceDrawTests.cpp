// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <tests/support/GLTest.h>

#include <cmath>
#include <functional>
#include <set>

using Draw = VX_GLConvenienceDraw;

namespace {

/// Place and texture coordinate of each corner of each line and triangle.
using Corners = std::multiset<std::vector<float>>;

/// What GL made of a draw.
Corners drawnBy(const std::function<void()>& draw) {
    std::vector<float> fed(10000);
    glFeedbackBuffer(GLsizei(fed.size()), GL_4D_COLOR_TEXTURE, fed.data());
    glRenderMode(GL_FEEDBACK);
    draw();
    const float* const end = fed.data() + glRenderMode(GL_RENDER);
    EXPECT_EQ(stateOf(GL_VERTEX_ARRAY, GL_TEXTURE_COORD_ARRAY), ints(0, 0));
    Corners corners;
    for (const float* at = fed.data(); at < end;) {
        int count = *at++ == GL_POLYGON_TOKEN ? int(*at++) : 2;
        for (; count > 0; --count, at += 12)
            corners.insert({std::round(at[0]), std::round(at[1]), at[8], at[9]});
    }
    return corners;
}

} // namespace

TEST(VX_GLConvenienceDraw, DrawsFromClientMemoryAndLeavesNoArrayEnabled) {
    HeadlessContext gl(256, 256);
    glOrtho(0, 256, 0, 256, -9, 9);
    const CGRect rect = CGRectMake(1, 2, 10, 20);
    EXPECT_EQ(drawnBy([] {
                  Draw::drawLine(VXVector2{1, 2}, VXVector2{3, 4});
              }),
              (Corners{{1, 2, 0, 0}, {3, 4, 0, 0}}));
    EXPECT_EQ(drawnBy([] {
                  Draw::drawLine({1, 2, 3}, VXVector3{4, 5, 6});
              }),
              (Corners{{1, 2, 0, 0}, {4, 5, 0, 0}}));
    const auto both = [](std::vector<float> a, std::vector<float> b, std::vector<float> c,
                         std::vector<float> d, bool isStrip) {
        return isStrip ? Corners{a, b, b, c, c, d} : Corners{a, a, b, b, c, c, d, d};
    };
    EXPECT_EQ(drawnBy([&] { Draw::drawStrokedRect(rect); }),
              both({1, 2, 0, 0}, {11, 2, 0, 0}, {1, 22, 0, 0}, {11, 22, 0, 0}, false));
    EXPECT_EQ(drawnBy([&] { Draw::drawSolidRect(rect, true); }),
              both({11, 2, 11, 2}, {1, 2, 1, 2}, {11, 22, 11, 22}, {1, 22, 1, 22}, true));
    EXPECT_EQ(drawnBy([&] { Draw::drawSolidRect(rect, false); }),
              both({11, 2, 1, 0}, {1, 2, 0, 0}, {11, 22, 1, 1}, {1, 22, 0, 1}, true));
}

TEST(VX_GLConvenienceDraw, CountsTheSegmentsOfACircle) {
    HeadlessContext gl(256, 256);
    glOrtho(0, 256, 0, 256, -9, 9);
    const Corners four = drawnBy([] { Draw::drawSolidCircle({120, 110}, 100, 4); });
    EXPECT_EQ(four.count({120, 110, 0, 0}), 4u);
    for (const auto& [x, y] : {std::pair(220, 110), {120, 210}, {20, 110}, {120, 10}})
        EXPECT_EQ(four.count({float(x), float(y), 0, 0}), 2u) << x;
    const std::tuple<float, int, unsigned> rows[] = {{10, 0, 62}, {0.1f, 0, 2}, {1, -5, 6}, {1, 1, 2}};
    for (const auto& [radius, segments, used] : rows)
        EXPECT_EQ(drawnBy([r = radius, n = segments] {
                      Draw::drawSolidCircle({99, 99}, r, n);
                  }).size(),
                  3 * used)
            << radius << ' ' << segments;
    for (const float radius : {-3.0f, NAN, 1e30f})
        Draw::drawSolidCircle({99, 99}, radius, 0);
}

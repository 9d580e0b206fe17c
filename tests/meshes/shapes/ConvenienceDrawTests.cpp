// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/shapes/VX_GLConvenienceDraw.h>
#include <tests/support/GLTest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <set>

using Draw = VX_GLConvenienceDraw;

namespace {

/// Place and texture coordinate of each corner of each line and triangle.
using Corners = std::multiset<std::vector<float>>;

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

TEST(VX_GLConvenienceDraw, DrawsFromClientMemoryAndCountsTheSegmentsOfACircle) {
    HeadlessContext gl(256, 256);
    glOrtho(0, 256, 0, 256, -9, 9);
    const CGRect rect = CGRectMake(1, 2, 10, 20);
    const VXVector2 from{1, 2}, to{3, 4};
    const VXVector3 from3{1, 2, 3}, to3{4, 5, 6};
    EXPECT_EQ(drawnBy([&] { Draw::drawLine(from, to); }), (Corners{{1, 2, 0, 0}, {3, 4, 0, 0}}));
    EXPECT_EQ(drawnBy([&] { Draw::drawLine(from3, to3); }), (Corners{{1, 2, 0, 0}, {4, 5, 0, 0}}));
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

    const VXVector2 middle{99, 99};
    const std::tuple<float, int, unsigned> rows[] = {{10, 0, 62}, {0.1f, 0, 2}, {1, -5, 6}, {1, 1, 2}};
    for (const auto& row : rows) {
        const Corners circle =
            drawnBy([&] { Draw::drawSolidCircle(middle, std::get<0>(row), std::get<1>(row)); });
        EXPECT_EQ(circle.size(), 3 * std::get<2>(row)) << "radius, segments, segments used: " << &row - rows;
    }
    const Corners four = drawnBy([&] { Draw::drawSolidCircle(middle, 50, 4); });
    const Corners axes = {{149, 99, 0, 0}, {99, 149, 0, 0}, {49, 99, 0, 0}, {99, 49, 0, 0}};
    EXPECT_EQ(std::set(four.begin(), four.end()).size(), 5u);
    EXPECT_TRUE(std::includes(four.begin(), four.end(), axes.begin(), axes.end()));
    for (const float radius : {-3.0f, NAN, 1e30f})
        Draw::drawSolidCircle(middle, radius, 0);
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/AlertPainter.h>

#include <gtest/gtest.h>
#include <tests/drawing/Picture.h>

#include <string>

using namespace vx;
using namespace vx::test;

namespace {

int leftEdge(const AlertPainter& painter, int button, int y) {
    int x = 0;
    while (x < painter.width() && painter.buttonAt(x, y) != button)
        ++x;
    return x;
}

} // namespace

TEST(AlertPainter, PaintsItsButtonsWhereTheyArePressed) {
    const AlertPainter painter({"Message", "Text", {"OK", "Cancel"}}, 1, 1280, 800);
    const int y = painter.height() - 35, ok = leftEdge(painter, 0, y), other = leftEdge(painter, 1, y);
    EXPECT_LT(other + 80, ok);
    Canvas rest(painter.width(), painter.height()), pressed(painter.width(), painter.height());
    painter.paint(rest, 0, -1);
    painter.paint(pressed, 1, 0);
    EXPECT_EQ(pixelOf(rest, 3, 3), 0xfff2f2f2u);
    EXPECT_EQ(pixelOf(rest, ok + 8, y), 0xff2f74c8u);
    EXPECT_EQ(pixelOf(pressed, ok + 8, y), 0xff1f5faeu);
    EXPECT_NE(pixelOf(rest, other, y), pixelOf(pressed, other, y)) << "no ring around the focus";
}

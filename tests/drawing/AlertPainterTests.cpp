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
    EXPECT_EQ(painter.buttonAt(ok, 5), -1);
    EXPECT_EQ(painter.buttonAt(painter.width() - 5, y), -1);
    Canvas rest(painter.width(), painter.height()), pressed(painter.width(), painter.height());
    painter.paint(rest, 0, -1);
    painter.paint(pressed, 1, 0);
    EXPECT_EQ(pixelOf(rest, 3, 3), 0xfff2f2f2u);
    EXPECT_EQ(pixelOf(rest, ok + 8, y), 0xff2f74c8u);
    EXPECT_EQ(pixelOf(pressed, ok + 8, y), 0xff1f5faeu);
    EXPECT_NE(pixelOf(rest, other, y), pixelOf(pressed, other, y)) << "no ring around the focus";
}

TEST(AlertPainter, KeepsToTheRoomOfTheScreen) {
    std::string label, much;
    for (int i = 0; i < 2000; ++i)
        (i < 20 ? label : much) += "words ";
    for (const double scale : {1.0, 2.5}) {
        const AlertPainter painter({much, much, {label, label, label}}, scale, 1000, 700);
        EXPECT_TRUE(painter.width() <= 1000 && painter.height() <= 700) << painter.height();
        const int y = int(painter.height() - 35 * scale);
        EXPECT_LT(leftEdge(painter, 0, y), 1000);
        EXPECT_NEAR(leftEdge(painter, 2, y), 20 * scale, 3) << "the last button";
    }
}

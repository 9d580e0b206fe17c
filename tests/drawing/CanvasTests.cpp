// SPDX-License-Identifier: MIT
#include <tests/drawing/Picture.h>

#include <gtest/gtest.h>

#include <vector>

using namespace vx;
using namespace vx::test;

TEST(Canvas, FillsWholePixelsFromTheOriginAsked) {
    for (const auto origin : {Canvas::Origin::topLeft, Canvas::Origin::bottomLeft}) {
        Canvas canvas(20, 10, origin);
        canvas.moveTo(0, 0);
        canvas.lineTo(20, 10);
        canvas.lineTo(20, 0); // a path left over is no part of the rectangle
        canvas.setColor({1, 0, 0, 0.6});
        canvas.fillRectangle(2.4, 1.6, 5.2, 3);
        const InkBox box(canvas);
        EXPECT_TRUE(box.left == 2 && box.right == 8);
        EXPECT_EQ(box.top, origin == Canvas::Origin::topLeft ? 2 : 5);
        for (int at = 0; at < 6 * 3; ++at)
            ASSERT_EQ(pixelOf(canvas, 2 + at % 6, box.top + at / 6), 0x99990000u) << at;
    }
}

TEST(Canvas, BlendsOrReplacesAsSavedAndRestored) {
    Canvas canvas(2, 1);
    canvas.clear({1, 1, 1, 1});
    canvas.setColor({1, 0, 0, 0.6});
    canvas.save();
    canvas.setOperator(Canvas::Operator::copy);
    canvas.setColor({0, 0, 1, 0.6});
    canvas.fillRectangle(0, 0, 1, 1);
    canvas.restore();
    canvas.restore(); // one too many
    canvas.fillRectangle(1, 0, 1, 1);
    EXPECT_EQ(pixelOf(canvas, 0, 0), 0x99000099u);
    EXPECT_EQ(pixelOf(canvas, 1, 0), 0xffff6666u);
}

TEST(Canvas, SmoothsThePathsItFillsAndStrokes) {
    Canvas canvas(40, 40);
    canvas.addRoundedRectangle(4, 4, 32, 20, 99); // no more than half the height
    canvas.fillPathAndKeep();
    canvas.setColor(Color::rgb(0xff0000));
    canvas.strokePath(4);
    EXPECT_EQ(pixelOf(canvas, 20, 3), 0xffff0000u);
    EXPECT_EQ(pixelOf(canvas, 20, 14), 0xff000000u);
    EXPECT_EQ(pixelOf(canvas, 4, 4), 0u) << "the corner is not round";
}

TEST(Canvas, KeepsToTheCallersPixelsAndIsEmptyWhereNoneFit) {
    std::vector<std::uint32_t> memory(64, 0xdeadbeef);
    Canvas inside(memory.data(), 4, 2, 20);
    inside.clear({1, 1, 1, 1});
    ASSERT_EQ(inside.pixels(), reinterpret_cast<unsigned char*>(memory.data()));
    for (int i = 0; i < 15; ++i)
        EXPECT_EQ(memory[i], i % 5 < 4 && i < 10 ? 0xffffffffu : 0xdeadbeefu) << i;

    constexpr long long kHuge = (1LL << 32) + 16;
    const long long sizes[][3] = {{0, 4, 16}, {4, -1, 16},           {4, 32768, 16}, {4, 4, 12},
                                  {4, 4, 18}, {kHuge, 4, 4 * kHuge}, {4, 4, -8},     {4, 4, kHuge}};
    for (const auto& [width, height, stride] : sizes) {
        Canvas canvas(memory.data(), width, height, stride);
        EXPECT_TRUE(canvas.isEmpty() && !canvas.pixels() && canvas.width() == 0 && canvas.stride() == 0);
        canvas.fillRectangle(0, 0, 1, 1);
    }
    EXPECT_TRUE(Canvas(4, 0).isEmpty() && Canvas(kHuge, 4).isEmpty() && Canvas(nullptr, 4, 4, 16).isEmpty());
}

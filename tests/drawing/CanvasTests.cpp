// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/Canvas.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

using vx::Canvas;

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

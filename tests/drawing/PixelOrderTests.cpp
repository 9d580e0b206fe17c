// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/PixelOrder.h>

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

// Of any length at any address: with wide registers, without, and by both in turns.
TEST(PixelOrder, IsChangedByteForByte) {
    using Bytes = std::vector<unsigned char>;
    for (std::size_t count = 0; count < 70; ++count) {
        Bytes from(4 * count + 3), swapped(4 * count + 8, 0xEE), opaque = swapped;
        for (std::size_t i = 0; i < from.size(); ++i)
            from[i] = static_cast<unsigned char>(i * 37 + count);
        Bytes wantedSwap = swapped, wantedOpaque = swapped;
        for (std::size_t i = 0; i < 4 * count; ++i) {
            wantedSwap[i + 1] = from[i % 4 == 3 ? i + 3 : i / 4 * 4 + 2 - i % 4 + 3];
            wantedOpaque[i + 1] = i % 4 == 3 ? 255 : from[i + 3];
        }
        vx::swapRedAndBlue(from.data() + 3, swapped.data() + 1, count);
        vx::copyOpaque(from.data() + 3, opaque.data() + 1, count);
        ASSERT_EQ(swapped, wantedSwap) << count;
        ASSERT_EQ(opaque, wantedOpaque) << count;
        vx::swapRedAndBlue(swapped.data() + 1, swapped.data() + 1, count); // in place
        ASSERT_EQ(std::memcmp(swapped.data() + 1, from.data() + 3, 4 * count), 0) << count;
    }
}

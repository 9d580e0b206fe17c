// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/PixelOrder.h>

#include <bit>
#include <cstdint>
#include <cstring>

namespace vx {

static_assert(std::endian::native == std::endian::little, "a canvas's blue comes first in memory");

namespace {

// Blocks of a fixed size in registers: a loop that the compiler turns into vector code at any optimisation.
constexpr std::size_t kBlock = 16;

template <class Change>
void changeEach(const unsigned char* from, unsigned char* to, std::size_t count, Change change) {
    std::uint32_t block[kBlock];
    for (; count >= kBlock; count -= kBlock, from += sizeof block, to += sizeof block) {
        std::memcpy(block, from, sizeof block);
        for (std::uint32_t& pixel : block)
            pixel = change(pixel);
        std::memcpy(to, block, sizeof block);
    }
    for (std::size_t i = 0; i < count; ++i) {
        std::memcpy(block, from + 4 * i, 4);
        block[0] = change(block[0]);
        std::memcpy(to + 4 * i, block, 4);
    }
}

} // namespace

void swapRedAndBlue(const unsigned char* from, unsigned char* to, std::size_t count) {
    changeEach(from, to, count, [](std::uint32_t pixel) {
        return (pixel & 0xff00ff00u) | (pixel >> 16 & 0xffu) | (pixel & 0xffu) << 16;
    });
}

void copyOpaque(const unsigned char* from, unsigned char* to, std::size_t count) {
    changeEach(from, to, count, [](std::uint32_t pixel) { return pixel | 0xff000000u; });
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/PixelOrder.h>

#include <bit>
#include <cstdint>
#include <cstring>

#ifdef __x86_64__
#include <immintrin.h>
#endif

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

void swapPlainly(const unsigned char* from, unsigned char* to, std::size_t count) {
    changeEach(from, to, count, [](std::uint32_t pixel) {
        return (pixel & 0xff00ff00u) | (pixel >> 16 & 0xffu) | (pixel & 0xffu) << 16;
    });
}

#ifdef __x86_64__
constexpr std::size_t kPixelsAtOnce = 8;

// One instruction for 8 pixels, where the plain loop needs a dozen. Returns how many pixels it did.
__attribute__((target("avx2"))) std::size_t swapByAVX2(const unsigned char* from, unsigned char* to,
                                                       std::size_t count) {
    const __m256i order = _mm256_setr_epi8(2, 1, 0, 3, 6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15, 2, 1, 0, 3,
                                           6, 5, 4, 7, 10, 9, 8, 11, 14, 13, 12, 15);
    std::size_t done = 0;
    for (; count - done >= kPixelsAtOnce; done += kPixelsAtOnce) {
        const __m256i pixels = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(from + 4 * done));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + 4 * done), _mm256_shuffle_epi8(pixels, order));
    }
    return done;
}

bool hasAVX2() {
    static const bool has = __builtin_cpu_supports("avx2");
    return has;
}
#endif

} // namespace

void swapRedAndBlue(const unsigned char* from, unsigned char* to, std::size_t count) {
    std::size_t done = 0;
#ifdef __x86_64__
    if (hasAVX2())
        done = swapByAVX2(from, to, count);
#endif
    swapPlainly(from + 4 * done, to + 4 * done, count - done);
}

void copyOpaque(const unsigned char* from, unsigned char* to, std::size_t count) {
    changeEach(from, to, count, [](std::uint32_t pixel) { return pixel | 0xff000000u; });
}

} // namespace vx

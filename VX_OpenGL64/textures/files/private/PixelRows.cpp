// SPDX-License-Identifier: MIT
// Plain loops that the compiler vectorises (see its options in CMakeLists.txt), each of them made twice on
// x86: for any machine, and for those with AVX2.
#include <VX_OpenGL64/textures/files/private/PixelRows.h>

#include <bit>
#include <cstring>

static_assert(std::endian::native == std::endian::little, "pixels are taken apart as 32-bit words");

#if defined(__x86_64__)
#define VX_WIDE [[gnu::target("avx2")]]
bool vx::pixels::usesWideRegisters = (__builtin_cpu_init(), __builtin_cpu_supports("avx2"));
#else
#define VX_WIDE
bool vx::pixels::usesWideRegisters = false;
#endif
#define VX_INLINE [[gnu::always_inline]] inline

// Defines the function of that name by the loop of the same name.
#define VX_BOTH(name, parameters, ...)          \
    VX_WIDE static void name##Wide parameters { \
        loops::name(__VA_ARGS__);               \
    }                                           \
    void vx::pixels::name parameters {          \
        if (usesWideRegisters)                  \
            name##Wide(__VA_ARGS__);            \
        else                                    \
            loops::name(__VA_ARGS__);           \
    }

namespace {
namespace loops {

using Byte = unsigned char;

VX_INLINE std::uint32_t load32(const Byte* from) {
    std::uint32_t word;
    std::memcpy(&word, from, sizeof word);
    return word;
}

template <class Word>
VX_INLINE void store(Word word, Byte* to) {
    std::memcpy(to, &word, sizeof word);
}

/// value * alpha / 255, to the nearest.
VX_INLINE std::uint32_t times(std::uint32_t value, std::uint32_t alpha) {
    const std::uint32_t product = value * alpha + 128;
    return (product + (product >> 8)) >> 8;
}

VX_INLINE void narrow(const std::uint16_t* __restrict in, Byte* __restrict out, std::size_t channels) {
    for (std::size_t i = 0; i < channels; ++i)
        out[i] = static_cast<Byte>((in[i] * 255u + 32895u) >> 16);
}

VX_INLINE void premultiplyRGBA(const Byte* __restrict in, Byte* __restrict out, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i) {
        const std::uint32_t p = load32(in + 4 * i), a = p >> 24;
        store(times(p & 255, a) | times(p >> 8 & 255, a) << 8 | times(p >> 16 & 255, a) << 16 | a << 24,
              out + 4 * i);
    }
}

VX_INLINE void premultiplyLA(const Byte* __restrict in, Byte* __restrict out, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i) {
        std::uint16_t p;
        std::memcpy(&p, in + 2 * i, sizeof p);
        const std::uint16_t product = static_cast<std::uint16_t>((p & 255) * (p >> 8) + 128);
        const auto gray = static_cast<std::uint16_t>(product + (product >> 8));
        store(static_cast<std::uint16_t>(gray >> 8 | (p & 0xFF00)), out + 2 * i);
    }
}

VX_INLINE std::uint32_t dividedBy(float alpha, std::uint32_t value) {
    return static_cast<std::uint32_t>(static_cast<int>(static_cast<float>(static_cast<int>(value)) / alpha)) &
           255;
}

VX_INLINE void undoPremultiplication(Byte* rgba, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i) {
        const std::uint32_t p = load32(rgba + 4 * i), a = p >> 24;
        const float alpha = static_cast<float>(static_cast<int>(a == 0 ? 255 : a)) / 255.0f;
        store(dividedBy(alpha, p & 255) | dividedBy(alpha, p >> 8 & 255) << 8 |
                  dividedBy(alpha, p >> 16 & 255) << 16 | a << 24,
              rgba + 4 * i);
    }
}

VX_INLINE void toRGB565(const Byte* __restrict rgb, Byte* __restrict out, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i)
        store(static_cast<std::uint16_t>((rgb[3 * i] >> 3) << 11 | (rgb[3 * i + 1] >> 2) << 5 |
                                         rgb[3 * i + 2] >> 3),
              out + 2 * i);
}

VX_INLINE void toRGBA5551(const Byte* __restrict rgb, Byte* __restrict out, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i)
        store(static_cast<std::uint16_t>((rgb[3 * i] >> 3) << 11 | (rgb[3 * i + 1] >> 3) << 6 |
                                         (rgb[3 * i + 2] >> 3) << 1 | 1),
              out + 2 * i);
}

VX_INLINE void grayToBGRA(const Byte* __restrict in, Byte* __restrict bgra, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i)
        store(in[i] * 0x010101u | 0xFF000000u, bgra + 4 * i);
}

VX_INLINE void grayAlphaToBGRA(const Byte* __restrict in, Byte* __restrict bgra, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i) {
        const std::uint32_t a = in[2 * i + 1];
        store(times(in[2 * i], a) * 0x010101u | a << 24, bgra + 4 * i);
    }
}

VX_INLINE void rgbToBGRA(const Byte* __restrict in, Byte* __restrict bgra, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i)
        store(std::uint32_t(in[3 * i] << 16 | in[3 * i + 1] << 8 | in[3 * i + 2]) | 0xFF000000u,
              bgra + 4 * i);
}

VX_INLINE void rgbaToBGRA(const Byte* __restrict in, Byte* __restrict bgra, std::size_t pixels) {
    for (std::size_t i = 0; i < pixels; ++i) {
        const std::uint32_t p = load32(in + 4 * i), a = p >> 24;
        store(times(p >> 16 & 255, a) | times(p >> 8 & 255, a) << 8 | times(p & 255, a) << 16 | a << 24,
              bgra + 4 * i);
    }
}

VX_INLINE void toBGRA(const Byte* in, unsigned channels, Byte* bgra, std::size_t pixels) {
    switch (channels) {
        case 1:
            return grayToBGRA(in, bgra, pixels);
        case 2:
            return grayAlphaToBGRA(in, bgra, pixels);
        case 3:
            return rgbToBGRA(in, bgra, pixels);
        default:
            return rgbaToBGRA(in, bgra, pixels);
    }
}

VX_INLINE void blendRows(const std::uint32_t* __restrict upper, const std::uint32_t* __restrict lower,
                         std::uint32_t weight, Byte* __restrict out, std::size_t channels) {
    for (std::size_t i = 0; i < channels; ++i)
        out[i] = static_cast<Byte>((upper[i] * (4096 - weight) + lower[i] * weight + (1u << 23)) >> 24);
}

} // namespace loops
} // namespace

VX_BOTH(narrow, (const std::uint16_t* in, unsigned char* out, std::size_t channels), in, out, channels)
VX_BOTH(premultiplyRGBA, (const unsigned char* in, unsigned char* out, std::size_t pixels), in, out, pixels)
VX_BOTH(premultiplyLA, (const unsigned char* in, unsigned char* out, std::size_t pixels), in, out, pixels)
VX_BOTH(undoPremultiplication, (unsigned char* rgba, std::size_t pixels), rgba, pixels)
VX_BOTH(toRGB565, (const unsigned char* rgb, unsigned char* out, std::size_t pixels), rgb, out, pixels)
VX_BOTH(toRGBA5551, (const unsigned char* rgb, unsigned char* out, std::size_t pixels), rgb, out, pixels)
VX_BOTH(toBGRA, (const unsigned char* in, unsigned channels, unsigned char* bgra, std::size_t pixels), in,
        channels, bgra, pixels)
VX_BOTH(blendRows,
        (const std::uint32_t* upper, const std::uint32_t* lower, std::uint32_t weight, unsigned char* out,
         std::size_t channels),
        upper, lower, weight, out, channels)

vx::pixels::StretchPoint vx::pixels::stretchPoint(std::size_t index, std::size_t inPixels,
                                                  std::size_t outPixels) {
    // (index + 1/2) * in / out - 1/2, over 2 * out.
    const std::size_t position = (2 * index + 1) * inPixels;
    if (position <= outPixels)
        return {0, 0};
    const std::size_t first = (position - outPixels) / (2 * outPixels);
    const std::size_t rest = (position - outPixels) % (2 * outPixels);
    if (first >= inPixels - 1)
        return {static_cast<std::uint32_t>(inPixels - 1), 0};
    return {static_cast<std::uint32_t>(first),
            static_cast<std::uint32_t>((rest * 4096 + outPixels) / (2 * outPixels))};
}

void vx::pixels::stretchRow(const unsigned char* in, const StretchPoint* points, std::uint32_t* out,
                            std::size_t outPixels) {
    for (std::size_t i = 0; i < outPixels; ++i) {
        const auto [first, weight] = points[i];
        const unsigned char* left = in + std::size_t(4) * first;
        const unsigned char* right = weight > 0 ? left + 4 : left;
        for (int channel = 0; channel < 4; ++channel)
            out[4 * i + channel] = left[channel] * (4096 - weight) + right[channel] * weight;
    }
}

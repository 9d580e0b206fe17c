// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

/// Conversions of a row of pixels, 8 bits a channel unless said otherwise; the same bytes on every machine.
/// Input and output do not overlap.
namespace vx::pixels {

/// 16 bits a channel to 8, to the nearest.
void narrow(const std::uint16_t* in, unsigned char* out, std::size_t channels);

/// Straight RGBA to premultiplied, to the nearest.
void premultiplyRGBA(const unsigned char* in, unsigned char* out, std::size_t pixels);
/// The same for gray with alpha.
void premultiplyLA(const unsigned char* in, unsigned char* out, std::size_t pixels);
/// Premultiplied RGBA to straight, in place: each colour divided by alpha / 255 in single precision and
/// truncated, of which the low 8 bits count. Pixels with alpha 0 or 255 stay as they are.
void undoPremultiplication(unsigned char* rgba, std::size_t pixels);

/// RGB to 16 bits a pixel, whose lowest bits are dropped; red is in the highest ones.
void toRGB565(const unsigned char* rgb, unsigned char* out, std::size_t pixels);
/// The same with 5 bits a channel and a lowest bit that is set.
void toRGBA5551(const unsigned char* rgb, unsigned char* out, std::size_t pixels);

/// Straight pixels of 1 to 4 channels (gray, gray and alpha, RGB, RGBA) to premultiplied BGRA.
void toBGRA(const unsigned char* in, unsigned channels, unsigned char* bgra, std::size_t pixels);

/// Where the middle of a pixel lies in the row or column it is stretched from: it is made of pixel `first`
/// and, by `weight` of 4096, the one behind it.
struct StretchPoint {
    std::uint32_t first;
    std::uint32_t weight;
};
/// That of pixel `index` of `outPixels`, stretched from `inPixels`, not more. The outermost pixels reach to
/// the edges.
StretchPoint stretchPoint(std::size_t index, std::size_t inPixels, std::size_t outPixels);
/// Linear interpolation between the pixels of a row, four channels each, to 4096 times the value.
void stretchRow(const unsigned char* in, const StretchPoint* points, std::uint32_t* out,
                std::size_t outPixels);
/// Between two rows of `stretchRow`, the lower one by `weight` of 4096, to the nearest.
void blendRows(const std::uint32_t* upper, const std::uint32_t* lower, std::uint32_t weight,
               unsigned char* out, std::size_t channels);

/// Whether the loops may use the machine's wide registers, which is so where it has them; for tests.
extern bool usesWideRegisters;

} // namespace vx::pixels

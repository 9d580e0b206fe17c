// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vx {

/// Copies pixels of 4 bytes and swaps the first byte of each with the third: a canvas's blue first to red
/// first, and back. `from` and `to` may be the same, or lie apart.
void swapRedAndBlue(const unsigned char* from, unsigned char* to, std::size_t count);
/// The same without the swap, with alpha (the last byte) made 255.
void copyOpaque(const unsigned char* from, unsigned char* to, std::size_t count);

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>

namespace vx::test {

/// CRC-32 of bytes, behind those of a former one.
inline std::uint32_t crcOf(const void* bytes, std::size_t count, std::uint32_t before = 0) {
    std::uint32_t crc = ~before;
    for (std::size_t i = 0; i < count; ++i) {
        crc ^= static_cast<const unsigned char*>(bytes)[i];
        for (int bit = 0; bit < 8; ++bit)
            crc = crc >> 1 ^ (crc & 1 ? 0xEDB88320u : 0u);
    }
    return ~crc;
}

} // namespace vx::test

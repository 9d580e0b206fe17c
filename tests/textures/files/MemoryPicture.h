// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <cstring>
#include <utility>
#include <vector>

namespace vx::test {

/// A picture of given rows, `goodRows` of which can be read.
class MemoryPicture : public PictureReader {
public:
    MemoryPicture(PictureInfo info, std::vector<unsigned char> bytes, std::size_t goodRows = ~std::size_t(0))
        : m_Bytes(std::move(bytes)), m_GoodRows(goodRows) {
        m_Info = info;
        m_Failure = "torn";
    }
    bool readRow(void* row) override {
        if (m_Next >= m_GoodRows)
            return false;
        std::memcpy(row, &m_Bytes.at(m_Next++ * m_Info.rowBytes()), m_Info.rowBytes());
        return true;
    }

private:
    std::vector<unsigned char> m_Bytes;
    std::size_t m_GoodRows, m_Next = 0;
};

/// The steps from a straight pixel to what is kept of it, one at a time.
inline unsigned premultiplied(unsigned value, unsigned alpha) {
    return static_cast<unsigned>(value * alpha / 255.0 + 0.5);
}
inline unsigned undone(unsigned value, unsigned alpha) {
    const float part = static_cast<float>(alpha) / 255.0f;
    return part > 0.0f && part < 1.0f ? static_cast<unsigned>(static_cast<float>(value) / part) & 255 : value;
}

} // namespace vx::test

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <vector>

namespace vx {

/// A picture's rows with 8 bits a channel, one at a time.
class RowReader {
public:
    explicit RowReader(PictureReader& picture);
    /// The next row, the top one first, which stands until the next call. Null when the picture is damaged.
    const unsigned char* next();

private:
    PictureReader& m_Picture;
    std::vector<std::uint16_t> m_Row;
    std::vector<unsigned char> m_Narrow; ///< used for 16 bits a channel
};

} // namespace vx

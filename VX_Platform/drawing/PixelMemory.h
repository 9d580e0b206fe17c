// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace vx {

/// Memory for the pixels of a picture. What ends is kept for the next picture of about that size: touching
/// fresh memory costs as much as drawing on it. Any thread.
class PixelMemory {
public:
    /// None.
    PixelMemory() = default;
    /// `size` bytes, aligned for any type, with whatever was in them; none when memory is short.
    explicit PixelMemory(std::size_t size);
    PixelMemory(PixelMemory&& other) noexcept;
    PixelMemory& operator=(PixelMemory&& other) noexcept;
    ~PixelMemory();

    /// Makes all bytes 0.
    void clear();
    /// Null when there is none.
    unsigned char* bytes() const { return m_Bytes; }
    std::size_t size() const { return m_Size; }

private:
    unsigned char* m_Bytes = nullptr;
    std::size_t m_Size = 0;
    std::size_t m_Room = 0;
    bool m_IsFresh = false;
};

} // namespace vx

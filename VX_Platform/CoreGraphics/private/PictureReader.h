// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

namespace vx {

/// What a picture's file says of it, and how its rows are handed out.
struct PictureInfo {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    /// In a row, with straight alpha: 1 gray, 2 gray and alpha, 3 RGB, 4 RGBA.
    unsigned channels = 3;
    /// In a row: 8, or 16 in the machine's byte order.
    unsigned bitsPerChannel = 8;
    /// Of the file's own pixels.
    unsigned bitsPerPixel = 24;

    bool isGray() const { return channels <= 2; }
    bool hasAlpha() const { return channels % 2 == 0; }
    std::size_t rowBytes() const { return std::size_t(width) * channels * (bitsPerChannel / 8); }
};

/// A picture file that is open, read row by row. Used by one thread at a time.
class PictureReader {
public:
    virtual ~PictureReader() = default;
    PictureReader(const PictureReader&) = delete;
    PictureReader& operator=(const PictureReader&) = delete;

    const PictureInfo& info() const { return m_Info; }
    /// Writes the next row, the top one first, `info().rowBytes()` bytes, aligned for 16 bits. False when the
    /// file is damaged or ends too early, which may be found with the last row only: then the rows before it
    /// are worth nothing either. Not to be called more often than the picture is high.
    virtual bool readRow(void* row) = 0;
    /// Why there is no picture, in a few words, once `readRow` has given false.
    const std::string& failure() const { return m_Failure; }

protected:
    PictureReader() = default;

    PictureInfo m_Info;
    std::string m_Failure;
};

/// Opens a picture of any kind that is known by its contents, whatever its name. Null when it is none, or is
/// refused ahead of any work: too large for the pixel budget, or claiming more than a file of that length can
/// hold. `why` then gets the reason in a few words.
std::unique_ptr<PictureReader> openPicture(const char* path, std::string* why = nullptr);
/// The same for a file in memory, which must outlive the reader.
std::unique_ptr<PictureReader> openPicture(std::span<const unsigned char> file, std::string* why = nullptr);

} // namespace vx

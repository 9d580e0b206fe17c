// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace vx {

/// What of a DDS file is looked at. No GL.
struct DDSFile {
    int width = 0;
    int height = 0;
    /// Of the header, which alone decides; none of the levels need be there.
    int mipMapCount = 0;
    /// GL's name of the compressed format.
    unsigned format = 0;
    int components = 0;
    /// What follows the header.
    std::uint32_t dataSize = 0;
    std::unique_ptr<unsigned char[]> data;
};

/// Reads the whole file. False, with a few words on it in `why`, for one that cannot be read, is no file of
/// its own (a folder, a pipe), ends inside its header or has another FourCC than DXT1, DXT3 and DXT5.
bool readDDSFile(const char* path, DDSFile& file, std::string& why);

struct DDSLevel {
    int width;
    int height;
    std::size_t offset; ///< in the data
    std::size_t size;
};

/// The levels from the largest on that lie wholly within `dataSize` bytes, `mipMapCount` at most. A side
/// that is negative stays so, for GL to refuse; such a level has no bytes.
std::vector<DDSLevel> levelsOfDDS(int width, int height, int mipMapCount, unsigned format,
                                  std::size_t dataSize);

} // namespace vx

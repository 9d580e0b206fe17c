// SPDX-License-Identifier: MIT
// The files in tests/pictures, and what each must show.
#pragma once

#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <cstring>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

namespace vx::test {

using Bytes = std::vector<unsigned char>;

inline Bytes bytesOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return Bytes(std::istreambuf_iterator<char>(file), {});
}

/// A line of list.txt.
struct PictureFile {
    std::string name, scene;
    PictureInfo info;
    int tolerance = 0;

    std::string path() const { return VX_PICTURES + name; }
};

inline std::vector<PictureFile> pictureFiles() {
    std::vector<PictureFile> files;
    std::ifstream list(VX_PICTURES "list.txt");
    for (PictureFile file; list >> file.name >> file.scene >> file.info.width >> file.info.height >>
                           file.info.channels >> file.info.bitsPerChannel >> file.info.bitsPerPixel >>
                           file.tolerance;)
        files.push_back(file);
    return files;
}

/// The samples of all rows; empty where the reader is null or gives up.
inline std::vector<int> samplesOf(PictureReader* reader) {
    std::vector<int> samples;
    if (!reader)
        return samples;
    const PictureInfo& info = reader->info();
    std::vector<std::uint16_t> row(info.rowBytes() / 2 + 1);
    const auto* bytes = reinterpret_cast<const unsigned char*>(row.data());
    for (std::uint32_t y = 0; y < info.height; ++y) {
        if (!reader->readRow(row.data()))
            return {};
        for (std::size_t i = 0; i < std::size_t(info.width) * info.channels; ++i)
            samples.push_back(info.bitsPerChannel == 16 ? row[i] : bytes[i]);
    }
    return samples;
}

/// In memory of their own, so that a read beside them is found.
inline std::vector<int> samplesOf(std::span<const unsigned char> bytes) {
    const Bytes copy(bytes.begin(), bytes.end());
    return samplesOf(openPicture(std::span<const unsigned char>(copy)).get());
}

} // namespace vx::test

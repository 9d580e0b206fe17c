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

/// A line of list.txt, and the samples' CRC-32 of the same in uploads.txt.
struct PictureFile {
    std::string name;
    PictureInfo info;
    std::uint32_t crc = 0;

    std::string path() const { return VX_PICTURES + name; }
};

inline std::vector<PictureFile> pictureFiles() {
    std::vector<PictureFile> files;
    std::ifstream list(VX_PICTURES "list.txt"), crcs(VX_PICTURES "uploads.txt");
    std::string scene, difference, rest;
    for (PictureFile f; list >> f.name >> scene >> f.info.width >> f.info.height >> f.info.channels >>
                        f.info.bitsPerChannel >> f.info.bitsPerPixel >> difference;) {
        crcs >> rest >> std::hex >> f.crc;
        std::getline(crcs, rest);
        files.push_back(f);
    }
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

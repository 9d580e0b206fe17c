// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/files/private/DDSFile.h>

#include <VX_Platform/Foundation/private/RegularFile.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr std::size_t kHeaderBytes = 128;
constexpr std::size_t kFourCC = 84;

const struct {
    char fourCC[5];
    unsigned format;
    int components;
} kFormats[] = {
    {"DXT5", GL_COMPRESSED_RGBA_S3TC_DXT5_EXT, 4},
    {"DXT3", GL_COMPRESSED_RGBA_S3TC_DXT3_EXT, 4},
    {"DXT1", GL_COMPRESSED_RGBA_S3TC_DXT1_EXT, 3},
};

int numberAt(const unsigned char* bytes) {
    return static_cast<int>(bytes[0] | bytes[1] << 8 | bytes[2] << 16 | std::uint32_t(bytes[3]) << 24);
}

bool readHeader(std::FILE* file, vx::DDSFile& out, std::string& why) {
    unsigned char header[kHeaderBytes];
    const std::size_t count = std::fread(header, 1, sizeof header, file);
    if (count < 4 || std::memcmp(header, "DDS ", 4) != 0)
        return why = "it does not begin with \"DDS \"", false;
    if (count < sizeof header)
        return why = "it ends inside its header", false;
    out.height = numberAt(header + 12);
    out.width = numberAt(header + 16);
    out.mipMapCount = numberAt(header + 28);
    for (const auto& known : kFormats) {
        if (std::memcmp(header + kFourCC, known.fourCC, 4) == 0) {
            out.format = known.format;
            out.components = known.components;
            return true;
        }
    }
    return why = "its FourCC is none of DXT1, DXT3 and DXT5", false;
}

std::size_t blocksOf(std::int64_t side) {
    return side < 0 ? 0 : static_cast<std::size_t>((side + 3) / 4);
}

int halved(int side) {
    return side / 2 == 0 && side >= 0 ? 1 : side >> 1;
}

} // namespace

bool vx::readDDSFile(const char* path, DDSFile& out, std::string& why) {
    std::uint64_t length = 0;
    const FileHandle file = openRegularFile(path, length, why);
    if (!file || !readHeader(file.get(), out, why))
        return false;
    const std::uint64_t rest = length - std::min<std::uint64_t>(length, kHeaderBytes);
    const auto size =
        static_cast<std::size_t>(std::min<std::uint64_t>(rest, std::numeric_limits<std::uint32_t>::max()));
    out.data.reset(new (std::nothrow) unsigned char[size]);
    if (!out.data)
        return why = "there is not enough memory", false;
    out.dataSize = static_cast<std::uint32_t>(std::fread(out.data.get(), 1, size, file.get()));
    return true;
}

std::vector<vx::DDSLevel> vx::levelsOfDDS(int width, int height, int mipMapCount, unsigned format,
                                          std::size_t dataSize) {
    // No side can be halved more often: no GL has a level beyond.
    constexpr int mostLevels = 32;
    const std::size_t blockBytes = format == GL_COMPRESSED_RGBA_S3TC_DXT1_EXT ? 8 : 16;
    std::vector<DDSLevel> levels;
    std::size_t offset = 0;
    for (int level = 0; level < std::min(mipMapCount, mostLevels); ++level) {
        const std::size_t size = blocksOf(width) * blockBytes * blocksOf(height);
        if (size > dataSize - offset)
            break;
        levels.push_back({width, height, offset, size});
        offset += size;
        width = halved(width);
        height = halved(height);
    }
    return levels;
}

// SPDX-License-Identifier: MIT
// Reads any bytes as a picture, to its last row.
#include <VX_Platform/CoreGraphics/CGImageSource.h>
#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <cstdlib>
#include <vector>

namespace {

void expect(bool condition) {
    if (!condition)
        std::abort();
}

/// The rows stand in memory of just their length. False where the reader gives up.
bool readRows(vx::PictureReader& reader) {
    std::vector<unsigned char> row(reader.info().rowBytes());
    for (std::uint32_t y = 0; y < reader.info().height; ++y) {
        if (!reader.readRow(row.data()))
            return false;
    }
    return true;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    constexpr std::uint64_t Budget = 1 << 20;
    CGImageSourceSetPixelBudget(Budget);
    std::string why;
    const auto reader = vx::openPicture(std::span<const unsigned char>(data, size), &why);
    expect(!reader == !why.empty());
    if (!reader)
        return 0;
    const vx::PictureInfo& info = reader->info();
    expect(info.width > 0 && info.height > 0 && std::uint64_t(info.width) * info.height <= Budget);
    expect(info.channels >= 1 && info.channels <= 4 && info.bitsPerPixel > 0);
    expect(info.bitsPerChannel == 8 || info.bitsPerChannel == 16);
    expect(readRows(*reader) == reader->failure().empty());
    return 0;
}

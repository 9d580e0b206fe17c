// SPDX-License-Identifier: MIT
// read_picture FILE: what is read from a picture file, as a PAM file to the standard output; or why nothing
// is.
#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <cstdio>
#include <vector>

int main(int argc, char** argv) {
    std::string why = "no file is named";
    const auto reader = argc > 1 ? vx::openPicture(argv[1], &why) : nullptr;
    if (!reader)
        return std::fprintf(stderr, "%s\n", why.c_str()) ? 1 : 2;
    const vx::PictureInfo& info = reader->info();
    std::vector<std::uint16_t> row(info.rowBytes() / 2 + 1);
    std::string body;
    for (std::uint32_t y = 0; y < info.height; ++y) {
        if (!reader->readRow(row.data()))
            return std::fprintf(stderr, "%s\n", reader->failure().c_str()) ? 1 : 2;
        for (std::uint16_t& sample : row)
            sample = info.bitsPerChannel == 16 ? std::uint16_t(sample << 8 | sample >> 8) : sample;
        body.append(reinterpret_cast<const char*>(row.data()), info.rowBytes());
    }
    static constexpr const char* Kinds[] = {"", "GRAYSCALE", "GRAYSCALE_ALPHA", "RGB", "RGB_ALPHA"};
    std::printf("P7\n# %u bits a pixel\nWIDTH %u\nHEIGHT %u\nDEPTH %u\nMAXVAL %u\nTUPLTYPE %s\nENDHDR\n",
                info.bitsPerPixel, info.width, info.height, info.channels,
                info.bitsPerChannel == 16 ? 65535u : 255u, Kinds[info.channels]);
    return std::fwrite(body.data(), 1, body.size(), stdout) == body.size() ? 0 : 1;
}

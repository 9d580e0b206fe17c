// SPDX-License-Identifier: MIT
// Picture files from the disk cache to rows in one buffer.
#include <bench/RatioTable.h>

#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include <jpeglib.h>
#include <png.h>
#include <unistd.h>
#include <zlib.h>

#if VX_BENCH_TURBOJPEG
#include <turbojpeg.h>
#endif

namespace {

using vx::bench::Work;
using Bytes = std::vector<unsigned char>;

constexpr unsigned Width = 4000, Height = 3000;

/// Like a photograph: soft shapes under a little noise.
Bytes photograph(unsigned channels) {
    Bytes pixels(std::size_t(Width) * Height * channels);
    std::uint32_t noise = 1;
    std::vector<float> across(Width);
    for (unsigned x = 0; x < Width; ++x)
        across[x] = 60 * std::sin(float(x) * 0.011f) + 20 * std::sin(float(x) * 0.13f);
    unsigned char* out = pixels.data();
    for (unsigned y = 0; y < Height; ++y) {
        const float down = 40 * std::sin(float(y) * 0.017f);
        for (unsigned x = 0; x < Width; ++x) {
            noise = noise * 1664525 + 1013904223;
            const float light = 128 + across[x] + down + float(noise >> 29);
            for (unsigned c = 0; c < channels; ++c)
                *out++ = static_cast<unsigned char>(
                    std::clamp(c == 3 ? 255 - light / 4 : light * (1 - 0.2f * float(c)), 0.0f, 255.0f));
        }
    }
    return pixels;
}

void writePNG(FILE* file, unsigned channels) {
    Bytes pixels = photograph(channels);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_compression_level(png, 6);
    png_set_IHDR(png, info, Width, Height, 8, channels == 4 ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    for (unsigned y = 0; y < Height; ++y)
        png_write_row(png, pixels.data() + std::size_t(y) * Width * channels);
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
}

void writeJPEG(FILE* file, unsigned channels) {
    Bytes pixels = photograph(channels);
    jpeg_compress_struct jpeg;
    jpeg_error_mgr errors;
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    jpeg_stdio_dest(&jpeg, file);
    jpeg.image_width = Width;
    jpeg.image_height = Height;
    jpeg.input_components = int(channels);
    jpeg.in_color_space = JCS_RGB;
    jpeg_set_defaults(&jpeg); // 4:2:0
    jpeg_set_quality(&jpeg, 85, TRUE);
    jpeg_start_compress(&jpeg, TRUE);
    for (unsigned y = 0; y < Height; ++y) {
        JSAMPROW row = pixels.data() + std::size_t(y) * Width * channels;
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    jpeg_destroy_compress(&jpeg);
}

/// A file that is written when it is first asked for, its bytes, and room for its rows.
class PictureFile {
public:
    PictureFile(unsigned channels, void (*write)(FILE*, unsigned)) : m_Channels(channels), m_Write(write) {}
    ~PictureFile() {
        if (!m_Path.empty())
            std::filesystem::remove(m_Path);
    }
    const std::string& path() {
        if (m_Path.empty()) {
            m_Path = std::filesystem::temp_directory_path() /
                     ("vx_bench_" + std::to_string(getpid()) + "_" + std::to_string(std::uintptr_t(this)));
            FILE* file = std::fopen(m_Path.c_str(), "wb");
            m_Write(file, m_Channels);
            std::fclose(file);
            std::ifstream stream(m_Path, std::ios::binary);
            bytes.assign(std::istreambuf_iterator<char>(stream), {});
            rows.assign((rowBytes() + 1) * Height, 0);
        }
        return m_Path;
    }
    std::size_t rowBytes() const { return std::size_t(Width) * m_Channels; }

    Bytes bytes, rows;

private:
    unsigned m_Channels;
    void (*m_Write)(FILE*, unsigned);
    std::string m_Path;
};

PictureFile png24(3, writePNG), png32(4, writePNG), jpeg(3, writeJPEG);

Work timed(PictureFile& file, bool (*read)(PictureFile& file)) {
    return [&file, read](benchmark::State& state) {
        file.path();
        for (auto _ : state) {
            if (!read(file))
                return state.SkipWithError("the picture is not whole");
        }
    };
}

bool readRows(PictureFile& file) {
    const auto reader = vx::openPicture(file.path().c_str());
    bool isWhole = reader && reader->info().rowBytes() == file.rowBytes();
    for (unsigned y = 0; isWhole && y < Height; ++y)
        isWhole = reader->readRow(file.rows.data() + y * file.rowBytes());
    return isWhole;
}

/// The pixels as they are compressed, behind a byte for each row.
bool inflateAlone(PictureFile& file) {
    z_stream stream{};
    inflateInit(&stream);
    stream.next_out = file.rows.data();
    stream.avail_out = uInt(file.rows.size());
    int result = Z_OK;
    for (std::size_t at = 8; at + 8 < file.bytes.size() && result == Z_OK;) {
        unsigned char* chunk = &file.bytes[at];
        const std::size_t size = std::size_t(chunk[0]) << 24 | chunk[1] << 16 | chunk[2] << 8 | chunk[3];
        if (std::memcmp(chunk + 4, "IDAT", 4) == 0) {
            stream.next_in = chunk + 8;
            stream.avail_in = uInt(size);
            result = inflate(&stream, Z_NO_FLUSH);
        }
        at += size + 12;
    }
    inflateEnd(&stream);
    return result == Z_STREAM_END && stream.avail_out == 0;
}

bool readByPNGImage(PictureFile& file) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    if (!png_image_begin_read_from_file(&image, file.path().c_str()))
        return false;
    return png_image_finish_read(&image, nullptr, file.rows.data(), 0, nullptr);
}

bool readByTurboJPEG(PictureFile& file) {
#if VX_BENCH_TURBOJPEG
    tjhandle handle = tjInitDecompress();
    const int result = tjDecompress2(handle, file.bytes.data(), file.bytes.size(), file.rows.data(), Width, 0,
                                     Height, TJPF_RGB, TJFLAG_NOREALLOC);
    tjDestroy(handle);
    return result == 0;
#else
    return false;
#endif
}

const bool registered =
    vx::bench::addRow({.name = "PNG 12 MP, 24 bit",
                       .limit = timed(png24, inflateAlone),
                       .ours = timed(png24, readRows),
                       .peers = {{"libpng's simple interface", timed(png24, readByPNGImage)}},
                       .must = 1.55,
                       .aim = 1.35}) &&
    vx::bench::addRow({.name = "PNG 12 MP, 32 bit",
                       .limit = timed(png32, inflateAlone),
                       .ours = timed(png32, readRows),
                       .peers = {{"libpng's simple interface", timed(png32, readByPNGImage)}},
                       .must = 1.45,
                       .aim = 1.25}) &&
    vx::bench::addRow({.name = "JPEG 12 MP, 4:2:0",
                       .limit = timed(jpeg, readByTurboJPEG),
                       .ours = timed(jpeg, readRows),
                       .must = 1.15,
                       .aim = 1.02});

} // namespace

// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>

#include <algorithm>
#include <array>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <vector>

#include <tiffio.h>

namespace {

/// A row of tiles may take this many bytes however small its picture is.
constexpr std::uint64_t kSmallTiles = std::uint64_t(64) << 20;

struct TIFFEnd {
    void operator()(TIFF* file) const { TIFFClose(file); }
};

/// A file as libtiff sees it, and in it the next row of all samples, or of one of them where each has a plane
/// of its own. Each plane has a file of its own, since libtiff begins a strip anew with each change of plane.
struct Plane {
    vx::ByteSource* source = nullptr;
    std::uint64_t position = 0;
    std::unique_ptr<TIFF, TIFFEnd> file;
    std::vector<unsigned char> line;
    std::vector<unsigned char> tiles; ///< a row of them
};

class TIFFDecoder final : public vx::PictureDecoder {
public:
    using PictureDecoder::PictureDecoder;
    bool open() override;
    bool readRow(void* row) override;

private:
    static int onWarning(TIFF* file, void* self, const char* module, const char* format, va_list arguments);
    static int onMessage(TIFF* file, void* self, const char* module, const char* format, va_list arguments);
    static tmsize_t readBytes(thandle_t plane, void* to, tmsize_t count);
    static toff_t seekTo(thandle_t plane, toff_t offset, int whence);

    bool openFile(Plane& plane);
    bool takeColors();
    bool takeSamples();
    void takeAlpha();
    bool takePalette();
    bool takeSize();
    std::uint64_t leastBytes() const;
    bool preparePlanes();
    bool prepareTiles(std::size_t lineBytes);
    std::uint32_t field(std::uint32_t tag, std::uint32_t otherwise) const;

    bool readPlane(std::size_t index);
    bool readTiles(std::size_t index);
    std::uint32_t sample(std::size_t x, std::uint32_t index) const;
    void writePixels(void* row) const;
    template <typename Out>
    void writeSamples(Out* out) const;
    void writePalette(unsigned char* out) const;

    std::vector<Plane> m_Planes = std::vector<Plane>(1);
    /// The value of a sample that is full.
    std::uint64_t mostOfSample() const { return std::uint64_t(0xffff) >> (16 - m_Bits) | 1; }

    std::uint32_t m_Photometric = 0, m_Compression = 0, m_Bits = 0, m_Samples = 0, m_Colors = 0;
    std::uint32_t m_Alpha = 0; ///< which sample it is; 0 for none
    bool m_IsPremultiplied = false;
    bool m_IsSeparate = false;
    std::vector<std::array<unsigned char, 3>> m_Palette;
    std::uint32_t m_TileWidth = 0, m_TileHeight = 0; ///< 0 for strips
    std::size_t m_TileRowBytes = 0, m_TileBytes = 0;
    bool m_IsCut = false;
    std::uint32_t m_Row = 0;
};

// Kept to itself: what matters is whether rows come.
int TIFFDecoder::onMessage(TIFF*, void*, const char*, const char*, va_list) {
    return 1;
}

// A field behind the end of the file is passed over by libtiff, which may or may not be missed.
int TIFFDecoder::onWarning(TIFF*, void* self, const char*, const char* format, va_list) {
    static_cast<TIFFDecoder*>(self)->m_IsCut |= std::strncmp(format, "IO error", 8) == 0;
    return 1;
}

tmsize_t TIFFDecoder::readBytes(thandle_t handle, void* to, tmsize_t count) {
    auto* plane = static_cast<Plane*>(handle);
    plane->source->seek(plane->position);
    const std::size_t got = plane->source->readSome(to, std::size_t(count));
    plane->position += got;
    return tmsize_t(got);
}

toff_t TIFFDecoder::seekTo(thandle_t handle, toff_t offset, int whence) {
    auto* plane = static_cast<Plane*>(handle);
    const std::uint64_t from = whence == SEEK_CUR   ? plane->position
                               : whence == SEEK_END ? plane->source->length()
                                                    : 0;
    return plane->position = from + offset;
}

bool TIFFDecoder::openFile(Plane& plane) {
    plane.source = m_Source.get();
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetErrorHandlerExtR(options, onMessage, this);
    TIFFOpenOptionsSetWarningHandlerExtR(options, onWarning, this);
    // Headers only: rows are read into memory of ours.
    const std::uint64_t most = (std::uint64_t(64) << 20) + m_Source->length();
    TIFFOpenOptionsSetMaxSingleMemAlloc(options, tmsize_t(most));
    const auto write = [](thandle_t, void*, tmsize_t) { return tmsize_t(0); };
    const auto close = [](thandle_t) { return 0; };
    const auto size = [](thandle_t handle) { return toff_t(static_cast<Plane*>(handle)->source->length()); };
    plane.file.reset(TIFFClientOpenExt("picture", "rm", &plane, readBytes, write, seekTo, close, size,
                                       nullptr, nullptr, options));
    TIFFOpenOptionsFree(options);
    return plane.file != nullptr;
}

std::uint32_t TIFFDecoder::field(std::uint32_t tag, std::uint32_t otherwise) const {
    std::uint16_t value = 0;
    return TIFFGetFieldDefaulted(m_Planes[0].file.get(), tag, &value) ? value : otherwise;
}

bool TIFFDecoder::open() {
    if (!openFile(m_Planes[0]))
        return fail("the file is damaged or cut short");
    if (m_IsCut)
        return cutShort();
    return takeSamples() && takeColors() && takeSize() && preparePlanes();
}

bool TIFFDecoder::takeSamples() {
    m_Bits = field(TIFFTAG_BITSPERSAMPLE, 1);
    m_Samples = field(TIFFTAG_SAMPLESPERPIXEL, 1);
    m_Compression = field(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    m_Photometric = field(TIFFTAG_PHOTOMETRIC, m_Samples < 3 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB);
    m_IsSeparate = m_Samples > 1 && field(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == PLANARCONFIG_SEPARATE;
    const std::uint32_t format = field(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT);
    if (m_Bits < 1 || m_Bits > 16 || m_Samples < 1 || m_Samples > 16 ||
        (format != SAMPLEFORMAT_UINT && format != SAMPLEFORMAT_VOID))
        return fail("samples of " + std::to_string(m_Bits) + " bits, or of their kind, are not read");
    return true;
}

bool TIFFDecoder::takeColors() {
    switch (m_Photometric) {
        case PHOTOMETRIC_MINISWHITE:
        case PHOTOMETRIC_MINISBLACK:
        case PHOTOMETRIC_PALETTE:
            m_Colors = 1;
            break;
        case PHOTOMETRIC_YCBCR:
            if (m_Compression != COMPRESSION_JPEG)
                return fail("its colours are of a kind that is not read");
            [[fallthrough]];
        case PHOTOMETRIC_RGB:
            m_Colors = 3;
            break;
        case PHOTOMETRIC_SEPARATED:
            m_Colors = 4;
            break;
        default:
            return fail("its colours are of a kind that is not read");
    }
    if (m_Samples < m_Colors)
        return fail("the file is damaged: too few samples a pixel");
    takeAlpha();
    const bool isGray = m_Colors == 1 && m_Photometric != PHOTOMETRIC_PALETTE;
    m_Info.channels = (isGray ? 1 : 3) + (m_Alpha > 0);
    m_Info.bitsPerChannel = m_Bits > 8 && m_Photometric != PHOTOMETRIC_PALETTE ? 16 : 8;
    m_Info.bitsPerPixel = m_Bits * m_Samples;
    return m_Photometric != PHOTOMETRIC_PALETTE || takePalette();
}

void TIFFDecoder::takeAlpha() {
    std::uint16_t count = 0, *kinds = nullptr;
    TIFFGetFieldDefaulted(m_Planes[0].file.get(), TIFFTAG_EXTRASAMPLES, &count, &kinds);
    for (std::uint32_t i = 0; i < count && m_Colors + i < m_Samples; ++i) {
        if (kinds[i] != EXTRASAMPLE_ASSOCALPHA && kinds[i] != EXTRASAMPLE_UNASSALPHA)
            continue;
        m_Alpha = m_Colors + i;
        m_IsPremultiplied = kinds[i] == EXTRASAMPLE_ASSOCALPHA && m_Photometric != PHOTOMETRIC_PALETTE;
        return;
    }
}

// 16 bits a colour; some programs fill in 8.
bool TIFFDecoder::takePalette() {
    std::uint16_t* maps[3];
    if (!TIFFGetField(m_Planes[0].file.get(), TIFFTAG_COLORMAP, &maps[0], &maps[1], &maps[2]))
        return fail("the file is damaged: there are no colours");
    m_Palette.resize(std::size_t(1) << m_Bits);
    bool isShort = true;
    for (const std::uint16_t* map : maps)
        isShort =
            isShort && std::all_of(map, map + m_Palette.size(), [](std::uint16_t v) { return v < 256; });
    for (std::size_t i = 0; i < m_Palette.size(); ++i) {
        for (std::size_t c = 0; c < 3; ++c)
            m_Palette[i][c] =
                static_cast<unsigned char>(isShort ? maps[c][i] : (maps[c][i] * 255u + 32767) / 65535);
    }
    return true;
}

bool TIFFDecoder::takeSize() {
    std::uint32_t width = 0, height = 0;
    TIFF* file = m_Planes[0].file.get();
    TIFFGetField(file, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(file, TIFFTAG_IMAGELENGTH, &height);
    if (!admit(width, height))
        return false;
    const std::uint64_t least = leastBytes();
    return least > 0 ? fileHolds(least) : fail("its compression is not read");
}

// What a byte of the file can be worth by each compression; 0 for one that is not read.
std::uint64_t TIFFDecoder::leastBytes() const {
    const std::uint64_t plain = (pixels() * m_Bits * m_Samples + 7) / 8;
    const auto atMost = [plain](std::uint64_t ratio) { return plain / ratio + 1; };
    switch (m_Compression) {
        case COMPRESSION_NONE:
            return plain;
        case COMPRESSION_PACKBITS:
            return atMost(64);
        case COMPRESSION_LZW:
            return atMost(4096); // the longest string that a code can stand for
        case COMPRESSION_ADOBE_DEFLATE:
        case COMPRESSION_DEFLATE:
            return atMost(1032);
        case COMPRESSION_JPEG:
            return pixels() / 2048 + 1; // as in a file of its own
        default:
            return 0;
    }
}

bool TIFFDecoder::preparePlanes() {
    const bool isTiled = TIFFIsTiled(m_Planes[0].file.get());
    if (m_IsSeparate) {
        // Plane i is sample i, as far as they are needed. libtiff knows the first by its address.
        std::vector<Plane> planes(std::max(m_Colors, m_Alpha + 1));
        m_Planes.swap(planes);
    }
    const std::uint64_t samples = m_IsSeparate ? 1 : m_Samples;
    const auto lineBytes = std::size_t((m_Info.width * samples * m_Bits + 7) / 8);
    for (Plane& plane : m_Planes) {
        if (!plane.file && !openFile(plane))
            return fail("the file is damaged");
        if (m_Compression == COMPRESSION_JPEG && m_Photometric == PHOTOMETRIC_YCBCR)
            TIFFSetField(plane.file.get(), TIFFTAG_JPEGCOLORMODE, JPEGCOLORMODE_RGB);
        if (!isTiled && std::size_t(TIFFScanlineSize64(plane.file.get())) != lineBytes)
            return fail("the file is damaged: rows of another length");
        plane.line.resize(lineBytes);
    }
    return !isTiled || prepareTiles(lineBytes);
}

bool TIFFDecoder::prepareTiles(std::size_t lineBytes) {
    TIFF* file = m_Planes[0].file.get();
    TIFFGetField(file, TIFFTAG_TILEWIDTH, &m_TileWidth);
    TIFFGetField(file, TIFFTAG_TILELENGTH, &m_TileHeight);
    if (m_TileWidth == 0 || m_TileHeight == 0)
        return fail("the file is damaged: tiles without pixels");
    m_TileRowBytes = std::size_t(TIFFTileRowSize64(file));
    m_TileBytes = std::size_t(TIFFTileSize64(file));
    const std::size_t across = (m_Info.width - 1) / m_TileWidth + std::size_t(1);
    if (m_TileRowBytes == 0 || m_TileBytes < m_TileRowBytes * m_TileHeight ||
        across * m_TileRowBytes < lineBytes)
        return fail("the file is damaged: rows of another length");
    const std::uint64_t planes = m_Planes.size(), whole = lineBytes * planes * m_Info.height;
    if (m_TileBytes > std::max(kSmallTiles, 4 * whole) / (across * planes))
        return fail("the file is damaged: tiles of another size than the picture's");
    for (Plane& plane : m_Planes) {
        plane.line.resize(across * m_TileRowBytes);
        plane.tiles.resize(across * m_TileBytes);
    }
    return true;
}

bool TIFFDecoder::readRow(void* row) {
    for (std::size_t i = 0; i < m_Planes.size(); ++i) {
        if (m_TileWidth ? !readTiles(i) : !readPlane(i))
            return fail("the file is damaged or cut short");
    }
    ++m_Row;
    writePixels(row);
    return true;
}

bool TIFFDecoder::readPlane(std::size_t index) {
    Plane& plane = m_Planes[index];
    return TIFFReadScanline(plane.file.get(), plane.line.data(), m_Row, std::uint16_t(index)) == 1;
}

bool TIFFDecoder::readTiles(std::size_t index) {
    Plane& plane = m_Planes[index];
    const std::size_t across = plane.tiles.size() / m_TileBytes, y = m_Row % m_TileHeight;
    for (std::size_t i = 0; i < across; ++i) {
        unsigned char* tile = plane.tiles.data() + i * m_TileBytes;
        if (y == 0 && TIFFReadTile(plane.file.get(), tile, std::uint32_t(i) * m_TileWidth, m_Row, 0,
                                   std::uint16_t(index)) < 0)
            return false;
        std::memcpy(plane.line.data() + i * m_TileRowBytes, tile + y * m_TileRowBytes, m_TileRowBytes);
    }
    return true;
}

// Whole bytes are in the machine's order, other samples follow each other bit by bit.
std::uint32_t TIFFDecoder::sample(std::size_t x, std::uint32_t index) const {
    const unsigned char* line = m_Planes[m_IsSeparate ? index : 0].line.data();
    const std::size_t at = m_IsSeparate ? x : x * m_Samples + index;
    if (m_Bits == 8)
        return line[at];
    if (m_Bits == 16) {
        std::uint16_t value;
        std::memcpy(&value, line + 2 * at, 2);
        return value;
    }
    std::uint32_t value = 0;
    for (std::size_t bit = at * m_Bits; bit < (at + 1) * m_Bits; ++bit)
        value = value << 1 | (line[bit / 8] >> (7 - bit % 8) & 1);
    return value;
}

void TIFFDecoder::writePixels(void* row) const {
    const bool asTheyAre = !m_IsSeparate && (m_Bits == 8 || m_Bits == 16) && m_Samples == m_Info.channels &&
                           !m_IsPremultiplied && m_Photometric != PHOTOMETRIC_PALETTE &&
                           m_Photometric != PHOTOMETRIC_MINISWHITE && m_Photometric != PHOTOMETRIC_SEPARATED;
    if (asTheyAre)
        std::memcpy(row, m_Planes[0].line.data(), m_Info.rowBytes());
    else if (m_Photometric == PHOTOMETRIC_PALETTE)
        writePalette(static_cast<unsigned char*>(row));
    else if (m_Info.bitsPerChannel == 16)
        writeSamples(static_cast<std::uint16_t*>(row));
    else
        writeSamples(static_cast<unsigned char*>(row));
}

void TIFFDecoder::writePalette(unsigned char* out) const {
    for (std::size_t x = 0; x < m_Info.width; ++x, out += m_Info.channels) {
        std::copy_n(m_Palette[sample(x, 0)].begin(), 3, out);
        if (m_Alpha > 0)
            out[3] = static_cast<unsigned char>(sample(x, m_Alpha) * 255 / mostOfSample());
    }
}

template <typename Out>
void TIFFDecoder::writeSamples(Out* out) const {
    const std::uint64_t most = mostOfSample(), full = std::numeric_limits<Out>::max();
    const std::size_t colors = m_Info.isGray() ? 1 : 3;
    for (std::size_t x = 0; x < m_Info.width; ++x) {
        const std::uint64_t alpha = m_Alpha > 0 ? sample(x, m_Alpha) : most;
        for (std::uint32_t c = 0; c < colors; ++c) {
            std::uint64_t value = sample(x, c);
            if (m_Photometric == PHOTOMETRIC_MINISWHITE)
                value = most - value;
            else if (m_Photometric == PHOTOMETRIC_SEPARATED)
                value = ((most - value) * (most - sample(x, 3)) + most / 2) / most;
            if (m_IsPremultiplied)
                value = alpha > 0 ? std::min(most, (value * most + alpha / 2) / alpha) : 0;
            *out++ = static_cast<Out>((value * full + most / 2) / most);
        }
        if (m_Alpha > 0)
            *out++ = static_cast<Out>((alpha * full + most / 2) / most);
    }
}

} // namespace

std::unique_ptr<vx::PictureDecoder> vx::makeTIFFDecoder(std::unique_ptr<ByteSource> source) {
    return std::make_unique<TIFFDecoder>(std::move(source));
}

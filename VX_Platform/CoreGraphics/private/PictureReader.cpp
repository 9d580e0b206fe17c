// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/CGImageSource.h>
#include <VX_Platform/CoreGraphics/private/PictureDecoder.h>
#include <VX_Platform/CoreGraphics/private/PictureLibraries.h>

#include <atomic>
#include <cctype>
#include <new>
#include <string_view>

namespace {

using Head = std::span<const unsigned char>;

std::atomic<std::uint64_t> budget = std::uint64_t(16384) * 16384;

bool startsWith(Head head, std::string_view mark) {
    return head.size() >= mark.size() &&
           std::string_view(reinterpret_cast<const char*>(head.data()), mark.size()) == mark;
}

bool isBMP(Head head) {
    return startsWith(head, "BM");
}
bool isGIF(Head head) {
    return startsWith(head, "GIF87a") || startsWith(head, "GIF89a");
}
bool isHDR(Head head) {
    return startsWith(head, "#?RADIANCE\n") || startsWith(head, "#?RGBE\n");
}
bool isJPEG(Head head) {
    return startsWith(head, "\xff\xd8\xff");
}
bool isPNG(Head head) {
    return startsWith(head, "\x89PNG\r\n\x1a\n");
}
bool isPNM(Head head) {
    return head.size() > 2 && head[0] == 'P' && head[1] >= '1' && head[1] <= '7' && std::isspace(head[2]);
}
bool isPSD(Head head) {
    return startsWith(head, "8BPS");
}
bool isTIFF(Head head) {
    using namespace std::string_view_literals;
    return startsWith(head, "II*\0"sv) || startsWith(head, "MM\0*"sv) || startsWith(head, "II+\0"sv) ||
           startsWith(head, "MM\0+"sv);
}
bool isWebP(Head head) {
    return startsWith(head, "RIFF") && head.size() >= 12 && startsWith(head.subspan(8), "WEBP");
}

struct Kind {
    const char* name;
    bool (*claims)(Head head);
    vx::PictureDecoderMaker make;
    VX_Library (*library)(const char* kind);
};

constexpr Kind kKinds[] = {
    {"PNG", isPNG, vx::makePNGDecoder, vx::libraryOfPNG},
    {"JPEG", isJPEG, vx::makeJPEGDecoder, vx::libraryOfJPEG},
    {"TIFF", isTIFF, vx::makeTIFFDecoder, vx::libraryOfTIFF},
    {"WebP", isWebP, vx::makeWebPDecoder, vx::libraryOfWebP},
    {"GIF", isGIF, vx::makeGIFDecoder, vx::libraryOfGIF},
    {"BMP", isBMP, vx::makeBMPDecoder, vx::noLibrary},
    {"PNM", isPNM, vx::makePNMDecoder, vx::noLibrary},
    {"PSD", isPSD, vx::makePSDDecoder, vx::libraryOfSTB},
    {"HDR", isHDR, vx::makeHDRDecoder, vx::libraryOfSTB},
    // Last, since it is told by numbers that look right.
    {"TGA", vx::mayBeTGA, vx::makeTGADecoder, vx::noLibrary},
};

vx::PictureDecoderMaker makerFor(Head head) {
    for (const Kind& kind : kKinds) {
        if (kind.claims(head))
            return kind.make;
    }
    return nullptr;
}

std::unique_ptr<vx::PictureReader> openSource(std::unique_ptr<vx::ByteSource> source, std::string& why) {
    unsigned char head[18];
    const std::size_t size = source->readSome(head, sizeof head);
    source->seek(0);
    why = size == 0 ? "the file is empty" : "it is no picture of a known kind";
    const vx::PictureDecoderMaker make = makerFor(Head(head, size));
    if (!make)
        return nullptr;
    try {
        std::unique_ptr<vx::PictureDecoder> decoder = make(std::move(source));
        if (decoder->open())
            return decoder;
        why = decoder->failure();
    } catch (const std::bad_alloc&) {
        why = "there is not enough memory";
    }
    return nullptr;
}

} // namespace

void CGImageSourceSetPixelBudget(std::uint64_t pixels) {
    budget = pixels;
}

std::vector<VX_Library> VX_GetPictureDecoders() {
    std::vector<VX_Library> decoders;
    for (const Kind& kind : kKinds)
        decoders.push_back(kind.library(kind.name));
    return decoders;
}

std::uint64_t vx::pixelBudget() {
    return budget;
}

bool vx::PictureDecoder::admit(std::uint64_t width, std::uint64_t height) {
    return admit(width, height, pixelBudget());
}

bool vx::PictureDecoder::admit(std::uint64_t width, std::uint64_t height, std::uint64_t budget) {
    if (width == 0 || height == 0)
        return fail("it has no pixels");
    if (width > INT32_MAX || height > INT32_MAX || width * height > budget)
        return fail(std::to_string(width) + " x " + std::to_string(height) + " pixels are over the budget");
    m_Info.width = std::uint32_t(width);
    m_Info.height = std::uint32_t(height);
    return true;
}

bool vx::PictureDecoder::fileHolds(std::uint64_t leastBytes) {
    if (leastBytes <= m_Source->length())
        return true;
    return fail("a file of " + std::to_string(m_Source->length()) + " bytes cannot hold " +
                std::to_string(m_Info.width) + " x " + std::to_string(m_Info.height) + " pixels");
}

std::unique_ptr<vx::PictureReader> vx::openPicture(const char* path, std::string* why) {
    std::string reason;
    std::unique_ptr<ByteSource> source = ByteSource::ofFile(path, reason);
    std::unique_ptr<PictureReader> reader = source ? openSource(std::move(source), reason) : nullptr;
    if (why && !reader)
        *why = reason;
    return reader;
}

std::unique_ptr<vx::PictureReader> vx::openPicture(std::span<const unsigned char> file, std::string* why) {
    std::string reason;
    std::unique_ptr<PictureReader> reader = openSource(std::make_unique<ByteSource>(file), reason);
    if (why && !reader)
        *why = reason;
    return reader;
}

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/private/ByteSource.h>
#include <VX_Platform/CoreGraphics/private/PictureReader.h>

#include <memory>
#include <string>
#include <utility>

namespace vx {

/// What the readers of all kinds of files share.
class PictureDecoder : public PictureReader {
public:
    explicit PictureDecoder(std::unique_ptr<ByteSource> source) : m_Source(std::move(source)) {}
    /// Reads what stands before the pixels into `info()`. False, with the reason in `failure()`, where there
    /// is no picture to be read.
    virtual bool open() = 0;

protected:
    bool fail(std::string why) {
        m_Failure = std::move(why);
        return false;
    }
    bool cutShort() { return fail("the file is cut short"); }
    /// Takes the size into `info()`. False for a picture without pixels, or with more than the budget has.
    bool admit(std::uint64_t width, std::uint64_t height);
    bool admit(std::uint64_t width, std::uint64_t height, std::uint64_t budget);
    /// False where the file is shorter than `leastBytes`, the fewest that such a picture can take.
    bool fileHolds(std::uint64_t leastBytes);
    std::uint64_t pixels() const { return std::uint64_t(m_Info.width) * m_Info.height; }

    std::unique_ptr<ByteSource> m_Source;
};

/// How many pixels a picture may have: see CGImageSourceSetPixelBudget.
std::uint64_t pixelBudget();

using PictureDecoderMaker = std::unique_ptr<PictureDecoder> (*)(std::unique_ptr<ByteSource> source);

std::unique_ptr<PictureDecoder> makeBMPDecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makeGIFDecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makeJPEGDecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makePNGDecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makePNMDecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makePSDDecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makeHDRDecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makeTGADecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makeTIFFDecoder(std::unique_ptr<ByteSource> source);
std::unique_ptr<PictureDecoder> makeWebPDecoder(std::unique_ptr<ByteSource> source);

/// Whether a file's first bytes, 18 or fewer, may be the header of a TGA, which has no mark of its own.
bool mayBeTGA(std::span<const unsigned char> head);

} // namespace vx

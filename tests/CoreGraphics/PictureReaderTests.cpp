// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/CGImageSource.h>
#include <VX_Platform/CoreGraphics/private/ByteSource.h>
#include <tests/CoreGraphics/PictureFiles.h>
#include <tests/support/Checksum.h>
#include <tests/support/TemporaryFile.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace {

using namespace vx::test;

// What make_uploads worked out apart from any reader.
std::uint32_t crcOfSamples(const std::vector<int>& samples, unsigned bitsPerChannel) {
    std::string bytes;
    for (const int sample : samples) {
        bytes += static_cast<char>(sample);
        if (bitsPerChannel == 16)
            bytes += static_cast<char>(sample >> 8);
    }
    return crcOf(bytes.data(), bytes.size());
}

TEST(PictureReader, EveryKindOfFileShowsItsScene) {
    const std::vector<PictureFile> files = pictureFiles();
    ASSERT_GE(files.size(), 130u);
    for (const PictureFile& file : files) {
        SCOPED_TRACE(file.name);
        std::string why;
        const auto reader = vx::openPicture(file.path().c_str(), &why);
        ASSERT_TRUE(reader) << why;
        EXPECT_EQ(reader->info().width, file.info.width);
        EXPECT_EQ(reader->info().height, file.info.height);
        EXPECT_EQ(reader->info().channels, file.info.channels);
        EXPECT_EQ(reader->info().bitsPerChannel, file.info.bitsPerChannel);
        EXPECT_EQ(reader->info().bitsPerPixel, file.info.bitsPerPixel);
        const std::vector<int> samples = samplesOf(reader.get());
        EXPECT_EQ(crcOfSamples(samples, file.info.bitsPerChannel), file.crc)
            << testing::PrintToString(samples);
        EXPECT_EQ(samplesOf(bytesOf(file.path())), samples);
    }
}

std::string whyNotInMemory(const std::string& bytes) {
    std::string why;
    const auto* data = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto reader = vx::openPicture(std::span(data, bytes.size()), &why);
    if (reader && samplesOf(reader.get()).empty())
        why = reader->failure();
    return why;
}

TEST(PictureReader, SamplesAreScaledWithRounding) {
    const std::string header = "P2 3 1 ";
    const auto of = [&](const std::string& rest) {
        const std::string file = header + rest;
        return samplesOf(std::span(reinterpret_cast<const unsigned char*>(file.data()), file.size()));
    };
    EXPECT_EQ(of("100 0 50 99"), (std::vector{0, 128, 252}));
    EXPECT_EQ(of("1 0 1 1"), (std::vector{0, 255, 255}));
    EXPECT_EQ(of("1000 1 500 1000"), (std::vector{66, 32768, 65535}));
    EXPECT_EQ(whyNotInMemory("P2 3 1 100 0 50 101"), "the file is damaged: a sample is too large");
}

TEST(PictureReader, TheBudgetRefusesWhatIsLarger) {
    const std::string row(40, '\0');
    EXPECT_EQ(whyNotInMemory("P5 4 10 255 " + row), "");
    CGImageSourceSetPixelBudget(39);
    EXPECT_EQ(whyNotInMemory("P5 4 10 255 " + row), "4 x 10 pixels are over the budget");
    CGImageSourceSetPixelBudget(40);
    EXPECT_EQ(whyNotInMemory("P5 4 10 255 " + row), "");
    CGImageSourceSetPixelBudget(std::uint64_t(16384) * 16384);
    EXPECT_EQ(whyNotInMemory("P5 65536 4097 255 "), "65536 x 4097 pixels are over the budget");
    EXPECT_EQ(whyNotInMemory("P5 65536 65536 255 "), "65536 x 65536 pixels are over the budget");
    EXPECT_EQ(whyNotInMemory("P5 65536 4096 255 "), "the file is cut short");
    EXPECT_EQ(whyNotInMemory("P5 0 4096 255 "), "it has no pixels");
    // Whatever the budget: a few bytes are enough for any size of a GIF.
    const std::string gif = "GIF89a" + std::string("\x01\x20\x00\x20\x80\x00\x00", 7) + std::string(6, '\0');
    EXPECT_EQ(whyNotInMemory(gif + "," + std::string("\0\0\0\0\x01\0\x01\0\0\x02", 10)),
              "8193 x 8192 pixels are over the budget");
}

TEST(PictureReader, PathsThatAreNoPicture) {
    const auto why = [](const char* path) {
        std::string text;
        EXPECT_FALSE(vx::openPicture(path, &text)) << path;
        EXPECT_FALSE(vx::openPicture(path)) << path;
        return text;
    };
    EXPECT_EQ(why(nullptr), "there is no path");
    EXPECT_EQ(why("/tmp"), "it is a directory");
    EXPECT_EQ(why("/dev/zero"), "it is no regular file");
    EXPECT_EQ(why("/tmp/none/at all"), "No such file or directory");
    EXPECT_EQ(why(TemporaryFile("").path()), "the file is empty");
    EXPECT_EQ(why(TemporaryFile("plain text, longer than a header").path()),
              "it is no picture of a known kind");

    const std::string folder = "/tmp/vx_test_" + std::to_string(getpid());
    const std::string odd = folder + "/b\xc3\xa4 d \xe5\x9b\xbe.txt", pipe = folder + "/pipe";
    std::filesystem::create_directory(folder);
    std::filesystem::copy(VX_PICTURES "color.png", odd);
    ASSERT_EQ(std::system(("mkfifo " + pipe).c_str()), 0);
    EXPECT_TRUE(vx::openPicture(odd.c_str()));
    EXPECT_EQ(why(pipe.c_str()), "it is no regular file");
    std::filesystem::remove_all(folder);
}

TEST(PictureReader, ByteSourceReadsAFileFromAnywhere) {
    std::string bytes;
    for (unsigned i = 0; i < 100000; ++i)
        bytes += static_cast<char>(i * 7 + i / 251);
    std::string why;
    const TemporaryFile file(bytes);
    const auto source = vx::ByteSource::ofFile(file.path(), why);
    std::uint32_t number = 1;
    for (int i = 0; i < 20000; ++i) {
        number = number * 1664525 + 1013904223;
        const std::size_t at = source->position(), count = number >> 8 & (i % 5 ? 63 : 4095);
        std::string read(count, 0);
        read.resize(source->readSome(read.data(), count));
        ASSERT_EQ(read, bytes.substr(at, count)) << "at " << at;
        const bool isEnd = at + count >= bytes.size();
        ASSERT_EQ(source->get(), isEnd ? -1 : static_cast<unsigned char>(bytes[at + count]))
            << "behind " << at;
        if (i % 3 == 0) // also to places at the ends of what has been read
            source->seek(i % 2 ? number >> 15 : source->position() / 32768 * 32768 + i % 7);
    }
    vx::ByteSource memory({reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()});
    const std::size_t spots[] = {0, 1, 32767, 32768, 32769, bytes.size() - 1, bytes.size(), bytes.size() + 1};
    for (int pair = 0; pair < 2 * 2 * 64; ++pair) { // of each two of them, beside what has been read or not
        vx::ByteSource& either = pair / 128 ? memory : *source;
        const std::size_t at = spots[pair % 2 ? pair / 2 % 8 : pair / 16 % 8];
        char read[3];
        either.seek(at);
        ASSERT_EQ(either.position(), std::min(at, bytes.size()));
        const std::size_t count = either.readSome(read, sizeof read);
        ASSERT_EQ(std::string(read, count), bytes.substr(std::min(at, bytes.size()), 3)) << pair;
    }
}

TEST(PictureReader, OldRunsOfHDRFilesRepeatTheLastPixel) {
    const std::string file =
        "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y 1 +X 300\n" +
        std::string("\xff\x80\x40\x80\x80\xff\x40\x80\x01\x01\x01\x2a\x01\x01\x01\x01", 16);
    const std::vector<int> samples =
        samplesOf(std::span(reinterpret_cast<const unsigned char*>(file.data()), file.size()));
    ASSERT_EQ(samples.size(), 900u);
    for (std::size_t x = 2; x < 300; ++x)
        ASSERT_EQ(samples[3 * x], samples[3]) << x;
    EXPECT_LT(samples[3], samples[0]);
}

} // namespace

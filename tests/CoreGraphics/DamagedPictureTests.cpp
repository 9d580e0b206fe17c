// SPDX-License-Identifier: MIT
#include <tests/CoreGraphics/PictureFiles.h>
#include <tests/support/TemporaryFile.h>

#include <gtest/gtest.h>

#include <chrono>

namespace {

using namespace vx::test;

bool endsWith(const std::string& name, const std::string& end) {
    return name.size() >= end.size() && name.compare(name.size() - end.size(), end.size(), end) == 0;
}

/// How many bytes at the end say nothing of the picture, or cannot be missed.
std::size_t spare(const std::string& name) {
    if (endsWith(name, ".tga"))
        return name == "bottom_right.tga" ? 0 : 26; // what newer files have at their end
    if (name == "tiles4.tif" || name == "big.tif")
        return 8; // where a further picture would be
    if (name == "moving.gif")
        return 63;                                                                     // the second frame
    return name.compare(0, 5, "ascii") == 0 ? 5 : endsWith(name, "dense.pbm") ? 1 : 0; // a number is shorter
}

TEST(DamagedPicture, CutAnywhereIsNoPicture) {
    for (const PictureFile& file : pictureFiles()) {
        const Bytes whole = bytesOf(file.path());
        for (std::size_t length = 0; length + spare(file.name) < whole.size(); ++length)
            ASSERT_TRUE(samplesOf(std::span(whole.data(), length)).empty())
                << file.name << " of " << whole.size() << " bytes, cut to " << length;
    }
}

TEST(DamagedPicture, AnyByteMayBeWrong) {
    for (const PictureFile& file : pictureFiles()) {
        Bytes bytes = bytesOf(file.path());
        int refused = 0;
        for (unsigned char& byte : bytes) {
            for (const unsigned char change : {0xff, 0x01}) {
                byte ^= change;
                refused += samplesOf(bytes).empty();
                byte ^= change;
            }
        }
        EXPECT_TRUE(!endsWith(file.name, ".png") || refused == 2 * int(bytes.size())) << file.name;
    }
}

// Each of these says that it is of about 16000 x 16000 pixels.
TEST(DamagedPicture, WhatAFileOfThatLengthCannotHoldIsRefusedAtOnce) {
    using namespace std::string_literals;
    const struct {
        const char* name;
        std::string before, size; // what its size is written behind
        const char* why;
    } claims[] = {
        {"color.png", "IHDR", "\x00\x00\x3e\x80\x00\x00\x3e\x80\x08\x02\x00\x00\x00\xce\x1c\x48\x89"s,
         "cannot hold"},
        {"baseline.jpg", "\xff\xc0\x00\x11\x08"s, "\x3e\x80\x3e\x80", "cannot hold"},
        {"progressive.jpg", "\xff\xc2\x00\x11\x08"s, "\x3e\x80\x3e\x80", "cannot hold"},
        {"lossless.webp", "\x2f", "\xff\xff\xff\x0f", "cannot hold"},
        {"lossy.webp", "\x9d\x01\x2a", "\xff\x3f\xff\x3f", "cannot hold"},
        {"info24.bmp", "\x28\x00\x00\x00"s, "\x80\x3e\x00\x00\x80\x3e\x00\x00"s, "cut short"},
        {"rle8.bmp", "\x28\x00\x00\x00"s, "\x80\x3e\x00\x00\x80\x3e\x00\x00"s, "cannot hold"},
        {"runs24.tga", "\x00\x00\x0a\x00\x00\x00\x00\x00\x00\x00\x00\x00"s, "\x80\x3e\x80\x3e",
         "cannot hold"},
        {"top_left.tga", "\x00\x00\x02\x00\x00\x00\x00\x00\x00\x00\x00\x00"s, "\x80\x3e\x80\x3e",
         "cut short"},
        {"runs.psd", "\x00\x03"s, "\x00\x00\x3e\x80\x00\x00\x3e\x80"s, "cannot hold"},
        {"flat.hdr", "gbe\nEXPOSURE=1\n\n", "-Y 16000 +X 16000\n", "cannot hold"},
        {"color16.tif", "\x00\x01\x04\x00\x01\x00\x00\x00"s,
         "\x80\x3e\x00\x00\x01\x01\x04\x00\x01\x00\x00\x00\x80\x3e\x00\x00"s, "cannot hold"},
    };
    const auto start = std::chrono::steady_clock::now();
    for (const auto& claim : claims) {
        const Bytes bytes = bytesOf(VX_PICTURES + std::string(claim.name));
        std::string file(bytes.begin(), bytes.end()), why;
        const std::size_t at = file.find(claim.before);
        ASSERT_NE(at, std::string::npos) << claim.name;
        file.replace(at + claim.before.size(), claim.size.size(), claim.size);
        const auto* data = reinterpret_cast<const unsigned char*>(file.data());
        EXPECT_FALSE(vx::openPicture(std::span(data, file.size()), &why)) << claim.name;
        EXPECT_NE(why.find(claim.why), std::string::npos) << claim.name << ": " << why;
    }
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(1));
}

TEST(DamagedPicture, FewBytesForManyPixelsAreNoDamage) {
    for (const char* name : {"plain.jpg", "plain.png", "plain.tif", "plain.webp"}) {
        std::string why;
        const auto reader = vx::openPicture((VX_PICTURES "plain/" + std::string(name)).c_str(), &why);
        ASSERT_TRUE(reader) << name << ": " << why;
        Bytes row(reader->info().rowBytes());
        for (std::uint32_t y = 0; y < reader->info().height; ++y)
            ASSERT_TRUE(reader->readRow(row.data())) << name << ": " << reader->failure();
    }
}

std::string textOf(const char* name) {
    const Bytes bytes = bytesOf(VX_PICTURES + std::string(name));
    return std::string(bytes.begin(), bytes.end());
}

std::string whyNot(const std::string& file) {
    const vx::test::TemporaryFile onDisk(file);
    std::string why;
    const auto reader = vx::openPicture(onDisk.path(), &why);
    return reader && samplesOf(reader.get()).empty() ? reader->failure() : why;
}

TEST(DamagedPicture, JPEGScansAreCountedAndForeignDataIsPassedOver) {
    std::string file = textOf("progressive.jpg");
    const std::size_t scan = file.find("\xff\xda"), end = file.find("\xff\xc4", scan);
    const std::string again = file.substr(scan, end - scan);
    for (int i = 0; i < 120; ++i)
        file.insert(end, again);
    EXPECT_EQ(whyNot(file), "the file has too many scans");

    file = textOf("baseline.jpg");
    file.erase(file.size() - 30, 28); // the mark of the end stays
    EXPECT_NE(whyNot(file).find("damaged"), std::string::npos);

    file = textOf("progressive.jpg");
    file.insert(2, "\xff\xe1\xf0\x02" + std::string(0xf000, 'x'));
    EXPECT_EQ(whyNot(file), "");
    file.resize(40000);
    EXPECT_EQ(whyNot(file), "the file is cut short");
}

TEST(DamagedPicture, OneColorInAWebPIsLetThroughUpTo2048x2048) {
    std::string file = textOf("lossless.webp"), why;
    const auto refused = [&](const std::string& size) {
        file.replace(file.find('\x2f') + 1, 4, size);
        vx::openPicture(std::span(reinterpret_cast<const unsigned char*>(file.data()), file.size()), &why);
        return why;
    };
    EXPECT_EQ(refused("\xff\xc7\xff\x01"), "");
    EXPECT_EQ(refused(std::string("\x00\xc8\xff\x01", 4)),
              "a file of 62 bytes cannot hold 2049 x 2048 pixels");
}

TEST(DamagedPicture, CompressionOfOS2IsReadForRunsAlone) {
    std::string file = textOf("rle8.bmp");
    const std::vector<int> samples = samplesOf(bytesOf(VX_PICTURES "rle8.bmp"));
    file.insert(54, 24, '\0');
    file[10] = static_cast<char>(file[10] + 24);
    file[14] = 64;
    EXPECT_EQ(samplesOf(Bytes(file.begin(), file.end())), samples);
    file[28] = 16, file[30] = 3; // colour masks, in other headers
    EXPECT_EQ(whyNot(file), "its compression is not read");
}

TEST(DamagedPicture, RunsOutsideOfThePictureAreDamage) {
    using namespace std::string_literals;
    const std::string bmp = textOf("rle8.bmp"), tga = textOf("gray_runs.tga");
    const std::string body = bmp.substr(0, bmp.size() - 2);
    EXPECT_EQ(whyNot(body + "\x00\x01"s), "");
    for (const std::string& order : {"\x01\x05"s, "\x00\x00"s, "\x00\x02\x00\x01"s})
        EXPECT_EQ(whyNot(body + order + "\x00\x01"s), "the file is damaged: pixels beside the picture");
    std::string wide = body;
    wide.insert(wide.size() - 2, "\x08\x05"s); // in the last row, that is full
    EXPECT_EQ(whyNot(wide + "\x00\x01"s), "the file is damaged: pixels beside the picture");

    std::string run = tga.substr(0, 18) + std::string("\x9f\x07\x81\x07", 4); // 32 pixels and 2 of 35
    EXPECT_EQ(whyNot(run), "the file is cut short");
    EXPECT_EQ(whyNot(run + "\x80\x07"), "");
    EXPECT_EQ(whyNot(run + "\x81\x07"), "the file is damaged: pixels behind the last row");
}

// The tiles of a narrow picture are many times its size.
TEST(DamagedPicture, TilesFarLargerThanThePictureAreDamage) {
    std::string file = textOf("tiles.tif");
    for (const std::string& tag : {std::string("\x42\x01", 2), std::string("\x43\x01", 2)}) {
        const std::size_t at = file.find(tag + '\x03');
        ASSERT_NE(at == std::string::npos ? file.find(tag + '\x04') : at, std::string::npos);
        file.replace((at == std::string::npos ? file.find(tag + '\x04') : at) + 8, 2,
                     std::string("\xf0\xff", 2));
    }
    EXPECT_EQ(whyNot(file), "the file is damaged: tiles of another size than the picture's");
}

} // namespace

// SPDX-License-Identifier: MIT
#include <tests/CoreGraphics/PictureFiles.h>

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

} // namespace

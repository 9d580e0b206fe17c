// SPDX-License-Identifier: MIT
#include <tests/CoreGraphics/PictureFiles.h>

#include <gtest/gtest.h>

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

} // namespace

// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Row {
    const char* name;
    std::vector<std::uint32_t> attributes;
    bool usable;
};

const Row kRows[] = {
    {"an empty list", {0}, true},
    {"what hosts usually ask",
     {NSOpenGLPFAAccelerated, NSOpenGLPFADoubleBuffer, NSOpenGLPFAColorSize, 32, NSOpenGLPFADepthSize, 24,
      NSOpenGLPFAStencilSize, 8, NSOpenGLPFANoRecovery, NSOpenGLPFAOpenGLProfile,
      NSOpenGLProfileVersionLegacy, 0},
     true},
    {"an unknown word", {NSOpenGLPFADoubleBuffer, 9999, 0}, false},
    {"depth of 200 bits", {NSOpenGLPFADepthSize, 200, 0}, false},
    {"a size that would be negative as a signed number", {NSOpenGLPFADepthSize, 0xFFFFFFFFu, 0}, false},
    {"a core profile", {NSOpenGLPFAOpenGLProfile, NSOpenGLProfileVersion3_2Core, 0}, false},
    {"stereo", {NSOpenGLPFAStereo, 0}, false},
};

} // namespace

TEST(NSOpenGLPixelFormat, ServesWhatADriverHasAndRefusesTheRest) {
    NSApplication::useHeadlessPlatform();
    for (const Row& row : kRows) {
        auto format = NSRef<NSOpenGLPixelFormat>::adopt(
            (new NSOpenGLPixelFormat)->initWithAttributes(row.attributes.data()));
        EXPECT_EQ(static_cast<bool>(format), row.usable) << row.name;
    }
    EXPECT_EQ((new NSOpenGLPixelFormat)->initWithAttributes(nullptr), nullptr);
}

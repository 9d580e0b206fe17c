// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>
#include <VX_Platform/OpenGL/NSOpenGLPixelFormat.h>
#include <VX_Platform/OpenGL/NSOpenGLView.h>
#include <tests/support/Pixels.h>

#include <gtest/gtest.h>

namespace {

// Bits of alpha, depth and samples of the surface that a list of words leads to; empty when it is refused.
std::vector<int> bitsFor(std::vector<unsigned> words) {
    words.push_back(0);
    auto format =
        NSRef<NSOpenGLPixelFormat>::adopt((new NSOpenGLPixelFormat)->initWithAttributes(words.data()));
    if (!format)
        return {};
    auto view = NSInit(new NSOpenGLView, CGRectMake(0, 0, 16, 16), format.get());
    view->openGLContext()->makeCurrentContext();
    const std::vector<int> bits = vx::test::stateOf(GL_ALPHA_BITS, GL_DEPTH_BITS, GL_SAMPLES);
    view->clearGLContext();
    return bits;
}

} // namespace

TEST(NSOpenGLPixelFormat, GivesWhatWasAskedForWithoutTranslucencyOrRefuses) {
    NSApplication::useHeadlessPlatform();
    const std::vector<int> plain = bitsFor({NSOpenGLPFAColorSize, 24});
    EXPECT_TRUE(plain[0] == 0 && plain[2] == 0);
    const std::vector<int> full = bitsFor(
        {NSOpenGLPFAAccelerated, NSOpenGLPFADoubleBuffer, NSOpenGLPFAColorSize, 32, NSOpenGLPFAAlphaSize, 8,
         NSOpenGLPFADepthSize, 24, NSOpenGLPFAStencilSize, 8, NSOpenGLPFANoRecovery, NSOpenGLPFASamples, 4,
         NSOpenGLPFAOpenGLProfile, NSOpenGLProfileVersionLegacy});
    ASSERT_EQ(full.size(), 3u);
    EXPECT_TRUE(full[0] >= 8 && full[1] >= 24 && full[2] >= 4) << full[0] << full[1] << full[2];
    EXPECT_FALSE(bitsFor({}).empty());
    const std::vector<unsigned> refused[] = {{NSOpenGLPFADoubleBuffer, 9999},
                                             {NSOpenGLPFADepthSize, 200},
                                             {NSOpenGLPFADepthSize, 0xFFFFFFFFu},
                                             {NSOpenGLPFASamples, 256},
                                             {NSOpenGLPFAOpenGLProfile, NSOpenGLProfileVersion3_2Core},
                                             {NSOpenGLPFAStereo}};
    for (const std::vector<unsigned>& words : refused)
        EXPECT_TRUE(bitsFor(words).empty()) << words[0];
    EXPECT_EQ((new NSOpenGLPixelFormat)->initWithAttributes(nullptr), nullptr);
}

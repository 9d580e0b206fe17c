// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/PlatformTable.h>
#include <tests/support/EventRecorder.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/LogCollector.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using vx::test::EventRecorder;
using vx::test::LogCollector;

namespace {

// Bits of the surface that a pixel format of these words leads to.
struct Bits {
    GLint alpha = 0, depth = 0, samples = 0;
};

Bits bitsFor(std::initializer_list<unsigned> words) {
    NSApplication::useHeadlessPlatform();
    std::vector<unsigned> attributes(words);
    attributes.push_back(0);
    auto format =
        NSRef<NSOpenGLPixelFormat>::adopt((new NSOpenGLPixelFormat)->initWithAttributes(attributes.data()));
    auto view = NSRef<NSOpenGLView>::adopt((new NSOpenGLView)->initWithFrame({{}, {16, 16}}, format.get()));
    Bits bits;
    if (!view->openGLContext() || !view->openGLContext()->makeCurrentContext())
        return bits;
    glGetIntegerv(GL_ALPHA_BITS, &bits.alpha);
    glGetIntegerv(GL_DEPTH_BITS, &bits.depth);
    glGetIntegerv(GL_SAMPLES, &bits.samples);
    view->clearGLContext();
    return bits;
}

} // namespace

TEST(PlatformTable, IsAskedByNameAndHeadlessIsNeverFallenInto) {
    EXPECT_EQ(vx::platformNamed("cocoa"), nullptr);
    EXPECT_EQ(vx::platformNamed(""), nullptr);
    for (const vx::PlatformRow& row : vx::platformTable())
        EXPECT_EQ(vx::platformNamed(row.name), &row);
    const char* display = std::getenv("DISPLAY");
    const std::string former = display ? display : "";
    unsetenv("DISPLAY");
    EXPECT_EQ(vx::platformPresent(), nullptr);
    setenv("DISPLAY", ":4711", 1);
    EXPECT_EQ(vx::platformPresent(), vx::platformNamed("x11"));
    EventRecorder events;
    LogCollector log;
    EXPECT_EQ(vx::platformNamed("x11")->start(events, {}), nullptr);
    EXPECT_EQ(log.count("X server :4711 cannot be reached"), 1);
    former.empty() ? unsetenv("DISPLAY") : setenv("DISPLAY", former.c_str(), 1);
}

TEST(PlatformTable, ANamedDeviceIsNotReplacedByAnotherOne) {
    EventRecorder events;
    LogCollector log;
    EXPECT_EQ(vx::platformNamed("headless")->start(events, {.device = 99}), nullptr);
    EXPECT_EQ(log.count("device 99 was asked for"), 1);
    const auto first = vx::platformNamed("headless")->start(events, {.device = 0, .refreshRate = NAN});
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(log.count("the one asked for"), 1);
    ASSERT_EQ(first->displays().size(), 1u);
    EXPECT_EQ(first->displays()[0].refreshRate, 60.0) << "what cannot be kept gives the default display";
}

TEST(Application, ChoosesThePlatformByNameAndKeepsIt) {
    LogCollector log;
    EXPECT_FALSE(NSApplication::usePlatform("windows"));
    EXPECT_FALSE(NSApplication::usePlatform(nullptr));
    EXPECT_EQ(log.count("known are x11, headless"), 2);
    EXPECT_TRUE(NSApplication::usePlatform("headless"));
    ASSERT_TRUE(NSApplication::sharedApplication()->finishLaunching());
    EXPECT_STREQ(NSApplication::sharedApplication()->platformName(), "headless");
    EXPECT_EQ(log.count("Platform: headless, chosen by the host"), 1);
    EXPECT_FALSE(NSApplication::usePlatform("x11"));
    EXPECT_EQ(log.count("it stays as it is"), 1);
    EXPECT_TRUE(NSApplication::usePlatform("headless"));
}

TEST(PixelFormat, GivesWhatWasAskedForAndNoTranslucency) {
    const Bits plain = bitsFor({NSOpenGLPFAColorSize, 24});
    EXPECT_EQ(plain.alpha, 0);
    EXPECT_EQ(plain.samples, 0);
    const Bits full = bitsFor({NSOpenGLPFAColorSize, 24, NSOpenGLPFAAlphaSize, 8, NSOpenGLPFADepthSize, 24});
    EXPECT_GE(full.alpha, 8);
    EXPECT_GE(full.depth, 24);
    const Bits smooth = bitsFor({NSOpenGLPFAColorSize, 24, NSOpenGLPFASamples, 4});
    EXPECT_GE(smooth.samples, 4);
    const unsigned tooSmooth[] = {NSOpenGLPFASamples, 256, 0};
    EXPECT_EQ((new NSOpenGLPixelFormat)->initWithAttributes(tooSmooth), nullptr);
}

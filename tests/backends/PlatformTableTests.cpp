// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/AppKit/private/EventRouter.h>
#include <VX_Platform/backends/PlatformTable.h>
#include <tests/support/LogCollector.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using vx::test::LogCollector;

TEST(PlatformTable, NeverFallsIntoHeadlessWhereTheServerCannotBeReached) {
    LogCollector log;
    setenv("DISPLAY", ":4711", 1);
    EXPECT_EQ(vx::platformPresent(), vx::platformNamed("x11"));
    EXPECT_EQ(vx::platformNamed("x11")->start(vx::eventRouter(), {}), nullptr);
    EXPECT_EQ(log.count("X server :4711 cannot be reached"), 1);
}

TEST(PlatformTable, ANamedDeviceIsNotReplacedByAnotherOne) {
    LogCollector log;
    EXPECT_EQ(vx::platformNamed("headless")->start(vx::eventRouter(), {.device = 99}), nullptr);
    EXPECT_EQ(log.count("device 99 was asked for"), 1);
    const auto first =
        vx::platformNamed("headless")->start(vx::eventRouter(), {.device = 0, .refreshRate = NAN});
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(log.count("the one asked for"), 1);
    ASSERT_EQ(first->displays().size(), 1u);
    EXPECT_EQ(first->displays()[0].refreshRate, 60.0) << "what cannot be kept gives the default display";
}

TEST(Application, ChoosesThePlatformByNameAndKeepsIt) {
    LogCollector log;
    unsetenv("DISPLAY");
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ((new NSWindow)->initWithContentRect(CGRectMake(0, 0, 10, 10), 0), nullptr);
    EXPECT_EQ(log.count("No display"), 1);
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

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_GLScreenManager.h>
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSString.h>

#include <gtest/gtest.h>

#include <string>

namespace {

// Thirteen displays in a row, each wider than the one before; the platform's own is the first.
struct ScreenManager : testing::Test {
    static constexpr int kPlugged = 12;

    ScreenManager() {
        NSApplication::useHeadlessPlatform();
        double left = 1920.0;
        for (int i = 0; i < kPlugged; ++i) {
            NSApplication::plugHeadlessDisplay(name(i).c_str(), CGRectMake(left, 0, 100 + i, 50), 60.0);
            left += 100 + i;
        }
        manager = NSInit(new VX_GLScreenManager);
    }
    ~ScreenManager() override {
        for (int i = 0; i < kPlugged; ++i)
            NSApplication::unplugHeadlessDisplay(name(i).c_str());
    }
    static std::string name(int i) { return "wall " + std::to_string(i); }
    int found(const char* name) {
        CGDirectDisplayID* const display =
            manager->searchDisplayIDByLocalDeviceName(NSString::stringWithUTF8String(name));
        return display ? int(display - manager->queryActiveDisplay(0)) : -1;
    }
    CGDirectDisplayID at(CGPoint point) {
        CGDirectDisplayID display = 99;
        const bool found = manager->searchDisplayIDFromPoint(point, &display);
        EXPECT_EQ(found, display != 0);
        return display;
    }
    CGDirectDisplayID centreOf(CGRect rect) {
        CGDirectDisplayID display = 99;
        const bool found = manager->searchDisplayIDFromRect(rect, &display);
        EXPECT_EQ(found, display != 0);
        return display;
    }

    NSRef<VX_GLScreenManager> manager;
};

} // namespace

TEST_F(ScreenManager, ListsTenDisplaysAndFindsThemByNamePlaceAndWindow) {
    EXPECT_EQ(manager->queryActiveDisplays(), 10);
    EXPECT_TRUE(!manager->queryActiveDisplay(-1) && !manager->queryActiveDisplay(10));
    EXPECT_EQ(manager->bounds(0).size.height, 1080.0);
    EXPECT_EQ(manager->bounds(2).origin.x, 2020.0);
    EXPECT_EQ(manager->pixelWidthHeightByIndex(9).width, 108.0);
    EXPECT_EQ(manager->pixelWidthHeightByIndex(10).width + manager->bounds(-1).size.width, 0.0);
    EXPECT_EQ(found("wall 3"), 4);
    EXPECT_EQ(found("Wall 3"), -1);
    EXPECT_EQ(found("wall 9"), -1) << "it is the eleventh";

    const CGDirectDisplayID second = *manager->queryActiveDisplay(1);
    EXPECT_EQ(at({1920, 0}), second);
    EXPECT_EQ(at({1919, 0}), *manager->queryActiveDisplay(0));
    EXPECT_EQ(at({1920, 50}), 0u) << "below it";
    const CGDirectDisplayID unlisted = at({1920 + 1266 - 1, 49}); // the last pixel of all
    EXPECT_STREQ(manager->screenNameForDisplay(unlisted)->UTF8String(), "wall 11");
    EXPECT_EQ(centreOf(CGRectMake(1900, 10, 60, 20)), second);
    EXPECT_EQ(centreOf(CGRectMake(1930, 10, 60, 100)), 0u) << "its centre lies below";

    const auto window = NSInit(new NSWindow, CGRectMake(1890, 10, 100, 30), NSBorderlessWindowMask);
    EXPECT_EQ(manager->searchDisplayIDFromWindow(window.get()), second) << "though it is not shown";
    window->setFrame(CGRectMake(0, 5000, 100, 30));
    EXPECT_EQ(manager->searchDisplayIDFromWindow(window.get()), 0u);
    EXPECT_EQ(manager->searchDisplayIDFromWindow(nullptr), 0u);
    window->close();

    EXPECT_EQ(NSScreen::screens()->count(), 13);
    EXPECT_STREQ(
        static_cast<NSScreen*>(NSScreen::screens()->objectAtIndex(12))->localizedName()->UTF8String(),
        "wall 11");
    EXPECT_EQ(NSScreen::mainScreen()->frame().size.width, 1920.0);
}

TEST_F(ScreenManager, AnswersAfreshAgainstATableThatStaysUntilTheNextQuery) {
    CGDirectDisplayID* const third = manager->queryActiveDisplay(2);
    const CGDirectDisplayID id = *third;
    NSApplication::unplugHeadlessDisplay("wall 1");
    EXPECT_EQ(*third, id);
    EXPECT_EQ(manager->bounds(2).size.width, 0.0);
    EXPECT_EQ(manager->screenNameForDisplay(id), nullptr);
    EXPECT_EQ(found("wall 7"), 2) << "who has no name matches every name";
    EXPECT_EQ(found("wall 0"), 1) << "behind those that match before it";
    manager->queryActiveDisplays();
    EXPECT_NE(*third, id);
    EXPECT_EQ(found("wall 7"), 7);
    NSApplication::plugHeadlessDisplay("wall 1", CGRectMake(9000, 0, 640, 480), 60.0);
    EXPECT_EQ(at({9000, 0}), id) << "it keeps its identifier";
}

// SPDX-License-Identifier: MIT
// On a server with two displays: DUMMY0 at 60 Hz and, right of it from x = 1280, DUMMY1 at 75 Hz.
#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/Foundation/NSDate.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <tests/support/ScriptedPipeline.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using vx::test::Stage;
using vx::test::waitFor;

namespace {

const vx::DisplayInfo* displayNamed(const std::vector<vx::DisplayInfo>& all, const char* name) {
    const auto found = std::ranges::find(all, name, &vx::DisplayInfo::name);
    return found == all.end() ? nullptr : &*found;
}

double announcedRate(Stage& stage) {
    return 1e9 / static_cast<double>(stage.pipeline->lastStamp().videoRefreshPeriod);
}

bool comes(Stage& stage, const std::function<bool()>& condition) {
    return waitFor(condition, [&] { stage.step(); });
}

// Refreshes per second over half a second of drawing, by the link's own count.
double countedRate(Stage& stage) {
    const auto begin = stage.pipeline->lastStamp();
    comes(stage, [&] { return stage.pipeline->lastStamp().hostTime > begin.hostTime + 500000000; });
    const auto end = stage.pipeline->lastStamp();
    return static_cast<double>(end.frameCount - begin.frameCount) * 1e9 /
           static_cast<double>(end.hostTime - begin.hostTime);
}

void xrandr(const char* arguments) {
    ASSERT_EQ(std::system(("xrandr " + std::string(arguments)).c_str()), 0);
}

} // namespace

TEST(X11Displays, AreListedWithTheirRatesAndFollowedAsTheyComeAndGo) {
    Stage stage;
    const auto platform = vx::runningPlatform();
    const std::vector<vx::DisplayInfo> before = platform->displays();
    ASSERT_EQ(before.size(), 2u);
    EXPECT_EQ(before[0].name, "DUMMY0") << "the primary one comes first";
    EXPECT_NEAR(before[0].refreshRate, 60.0, 0.01);
    EXPECT_NEAR(displayNamed(before, "DUMMY1")->refreshRate, 75.0, 0.01);
    EXPECT_EQ(displayNamed(before, "DUMMY1")->bounds.origin.x, 1280.0);

    int changes = 0;
    NSNotificationCenter::defaultCenter()->addObserver(
        &changes, [&](NSNotification*) { ++changes; }, NSApplicationDidChangeScreenParametersNotification,
        nullptr);
    xrandr("--output DUMMY1 --off");
    EXPECT_TRUE(comes(stage, [&] { return changes > 0; }));
    EXPECT_EQ(platform->displays().size(), 1u);
    xrandr("--output DUMMY2 --mode 1024x768_75 --pos 1280x0 --output DUMMY1 --mode 1024x768_75 --pos 2304x0");
    EXPECT_TRUE(comes(stage, [&] { return platform->displays().size() == 3; }));
    EXPECT_EQ(displayNamed(platform->displays(), "DUMMY1")->id, displayNamed(before, "DUMMY1")->id);
    NSNotificationCenter::defaultCenter()->removeObserver(&changes);
}

TEST(X11Displays, AWindowMovedWhileDrawingIsDrawnAtTheRateOfItsDisplay) {
    Stage stage(Stage::Draws::byItself);
    for (int round = 0; round < 2; ++round) {
        for (const auto& [x, rate] : {std::pair(1400, 75.0), std::pair(100, 60.0)}) {
            stage.window->setFrame(CGRectMake(x, 100, 64, 48));
            const auto isAnnounced = [&, rate = rate] { return std::abs(announcedRate(stage) - rate) < 0.5; };
            EXPECT_TRUE(comes(stage, isAnnounced)) << announcedRate(stage);
            // This server's events come at 60 Hz on all its outputs.
            EXPECT_NEAR(countedRate(stage), 60.0, 6.0);
        }
    }
    EXPECT_FALSE(stage.window->fillDisplay("DUMMY9"));
    ASSERT_TRUE(stage.window->fillDisplay("DUMMY1"));
    EXPECT_TRUE(comes(stage, [&] { return stage.window->frame().size.width == 1024.0; }));
    EXPECT_EQ(stage.window->frame().origin.x, 1280.0);
    EXPECT_TRUE(comes(stage, [&] { return std::abs(announcedRate(stage) - 75.0) < 0.5; }));
    EXPECT_TRUE(comes(stage, [&] { return announcedRate(stage) < 65.0; }))
        << "after a second the rate that was measured is told";
    stage.window->leaveDisplay();
    EXPECT_EQ(stage.window->frame().size.width, 64.0);
}

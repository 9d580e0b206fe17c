// SPDX-License-Identifier: MIT
// On a server with two displays: DUMMY0 at 60 Hz and, right of it from x = 1280, DUMMY1 at 75 Hz.
#include <VX_OpenGL64/output/VX_GLScreenManager.h>
#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/Foundation/NSDate.h>
#include <VX_Platform/Foundation/NSNotification.h>
#include <VX_Platform/Foundation/NSNotificationCenter.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/ScriptedPipeline.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>

// Behind the others: its macros take common words.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

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

void xrandr(const std::string& arguments) {
    ASSERT_EQ(std::system(("xrandr " + arguments).c_str()), 0);
}

// Puts an EDID on an output that names its display, as a cable would.
void nameDisplay(int index, const char* thirteenBytes) {
    unsigned char edid[128] = {0, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0};
    edid[57] = 0xFC;
    std::memcpy(edid + 59, thirteenBytes, 13);
    Display* const server = XOpenDisplay(nullptr);
    XRRScreenResources* const all = XRRGetScreenResourcesCurrent(server, DefaultRootWindow(server));
    XRRChangeOutputProperty(server, all->outputs[index], XInternAtom(server, "EDID", False), XA_INTEGER, 8,
                            PropModeReplace, edid, sizeof edid);
    XRRFreeScreenResources(all);
    XCloseDisplay(server);
}

std::string nameOf(VX_GLScreenManager* manager, int index) {
    const CGDirectDisplayID* const display = manager->queryActiveDisplay(index);
    NSString* const name = display ? manager->screenNameForDisplay(*display) : nullptr;
    return name ? name->UTF8String() : "(none)";
}

int descriptors() {
    return int(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
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

TEST(X11Displays, TwelveOutputsAreFoundByNamePlaceAndWindow) {
    Stage stage;
    double lefts[13] = {};
    std::string layout;
    for (int i = 0; i < 12; ++i) {
        // Widths from 200 in steps of 16, heights from 150 in steps of 8, all at 60 Hz.
        const int width = 200 + 16 * i, height = 150 + 8 * i, h = width + 100, v = height + 50;
        const std::string mode = "wall" + std::to_string(i), output = "DUMMY" + std::to_string(i);
        xrandr("--newmode " + mode + " " + std::to_string(h * v * 60e-6) + " " + std::to_string(width) + " " +
               std::to_string(width + 20) + " " + std::to_string(width + 60) + " " + std::to_string(h) + " " +
               std::to_string(height) + " " + std::to_string(height + 10) + " " +
               std::to_string(height + 20) + " " + std::to_string(v));
        xrandr("--addmode " + output + " " + mode);
        layout +=
            " --output " + output + " --mode " + mode + " --pos " + std::to_string(int(lefts[i])) + "x0";
        lefts[i + 1] = lefts[i] + width;
    }
    xrandr(layout);
    nameDisplay(3, "Beamer left\n ");
    nameDisplay(4, "Beamer\n      ");
    nameDisplay(5, "Beamer\n      ");
    nameDisplay(6, "\xFF\xFE\x80 no text\n ");

    const auto manager = NSInit(new VX_GLScreenManager);
    const int before = descriptors();
    for (int i = 0; i < 300; ++i)
        EXPECT_EQ(NSInit(new VX_GLScreenManager)->queryActiveDisplays(), 10);
    EXPECT_EQ(descriptors(), before);
    const char* names[] = {"DUMMY0", "DUMMY1", "DUMMY2", "Beamer left", "Beamer",
                           "Beamer", "DUMMY6", "DUMMY7", "DUMMY8",      "DUMMY9"};
    for (int i = 0; i < 10; ++i) {
        const CGRect bounds = manager->bounds(i);
        EXPECT_EQ(nameOf(manager.get(), i), names[i]);
        EXPECT_TRUE(bounds.origin.x == lefts[i] && bounds.size.width == 200 + 16 * i) << i;
        EXPECT_EQ(manager->pixelWidthHeightByIndex(i).height, 150 + 8 * i);
    }
    NSString* const twins = NSString::stringWithUTF8String("Beamer");
    EXPECT_EQ(manager->searchDisplayIDByLocalDeviceName(twins), manager->queryActiveDisplay(4));
    EXPECT_TRUE(stage.window->fillDisplay("DUMMY5")) << "a twin is reached by its output";
    EXPECT_TRUE(comes(stage, [&] { return stage.window->frame().origin.x == lefts[5]; }));
    EXPECT_EQ(manager->searchDisplayIDFromWindow(stage.window.get()), *manager->queryActiveDisplay(5));
    xrandr("--output DUMMY3 --off");
    EXPECT_EQ(nameOf(manager.get(), 3), "(none)");
    xrandr("--output DUMMY4 --same-as DUMMY5 --mode wall4");
    EXPECT_EQ(manager->queryActiveDisplays(), 10) << "mirrored ones are listed as well";
    stage.window->leaveDisplay();
    std::string off;
    for (int i = 0; i < 12; ++i)
        off += " --output DUMMY" + std::to_string(i) + " --off";
    xrandr(off);
    EXPECT_EQ(manager->queryActiveDisplays(), 0);
    EXPECT_EQ(manager->searchDisplayIDByLocalDeviceName(twins), nullptr);
    EXPECT_EQ(manager->searchDisplayIDFromWindow(stage.window.get()), 0u);
}

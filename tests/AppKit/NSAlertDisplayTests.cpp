// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSAlert.h>
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/Foundation/NSString.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <tests/support/LogCollector.h>

#include <gtest/gtest.h>
#include <tests/support/WaitFor.h>
#include <tests/support/X11Input.h>

#include <algorithm>
#include <atomic>

using namespace vx::test;

namespace {

constexpr std::uint32_t kReturn = 0xff0d, kEscape = 0xff1b, kTab = 0xff09, kSpace = 0x20;

NSString* text(const std::string& bytes) {
    return NSString::stringWithUTF8String(bytes.c_str());
}

// One alert with three buttons on a thread of its own; `result` is 99 as long as it stands.
class RunningAlert {
public:
    explicit RunningAlert(const std::string& informativeText) {
        m_Thread = std::thread([this, informativeText] {
            result = NSAlert::alertWithMessageText(text("Can't load shader"), text("OK"), text("Später"),
                                                   text("その他"), "%@", text(informativeText))
                         ->runModal();
        });
        EXPECT_TRUE(waitFor([this] { return !user.windows(program_invocation_short_name).empty(); }));
        window = user.windows(program_invocation_short_name).front();
    }
    ~RunningAlert() {
        if (result == 99)
            user.close(window);
        m_Thread.join();
    }
    bool waitForFirstPicture() {
        return waitFor([this] { return count(0x2f74c8) > 100; });
    }
    long count(std::uint32_t color) {
        const auto pixels = user.pixels({window.id, 0, 0, window.width, window.height});
        return std::count(pixels.begin(), pixels.end(), color);
    }
    int finalResult() {
        EXPECT_TRUE(
            waitFor([this] { return result != 99 && user.windows(program_invocation_short_name).empty(); }));
        return result;
    }

    void pressTabAnd(std::uint32_t key) {
        user.press(kTab);
        user.press(key);
    }
    // Clicks at a place counted from the lower right corner.
    void clickFromCorner(int x, int y) {
        user.click(window.x + window.width - x, window.y + window.height - y);
    }

    X11Input user;
    X11Input::Window window;
    std::atomic<int> result{99};

private:
    std::thread m_Thread;
};

} // namespace

TEST(NSAlertWindow, ShowsItsTextsCentredAndEndsByEachOfItsRoads) {
    struct Road {
        const char* name;
        int result;
        void (*take)(RunningAlert&);
    };
    const Road roads[] = {
        {"Return", 1, [](RunningAlert& alert) { alert.user.press(kReturn); }},
        {"close", 1, [](RunningAlert& alert) { alert.user.close(alert.window); }},
        {"Tab and space", 0, [](RunningAlert& alert) { alert.pressTabAnd(kSpace); }},
        {"Escape away from the default", 1, [](RunningAlert& alert) { alert.pressTabAnd(kEscape); }},
        {"click on the default button", 1, [](RunningAlert& alert) { alert.clickFromCorner(40, 35); }},
        {"click on the other button", -1, [](RunningAlert& alert) { alert.clickFromCorner(220, 35); }},
    };
    LogCollector log;
    VX_SetDiagnostics(true);
    for (const Road& road : roads) {
        SCOPED_TRACE(road.name);
        RunningAlert alert("lit.fs — grün, 日本語");
        ASSERT_TRUE(alert.waitForFirstPicture());
        EXPECT_NEAR(alert.window.x + alert.window.width / 2, 640, 1);
        EXPECT_NEAR(alert.window.y + alert.window.height / 2, 512, 1);
        EXPECT_GT(alert.count(0x202020), 100) << "no text";
        EXPECT_EQ(alert.result, 99);
        road.take(alert);
        EXPECT_EQ(alert.finalResult(), road.result);
    }
    VX_SetDiagnostics(false);
    EXPECT_EQ(log.count("Can't load shader: lit.fs"), int(std::size(roads)));
}

TEST(NSAlertWindow, KeepsItsButtonsOnTheScreenAndStaysOpenUntilOneIsPressed) {
    std::string path;
    for (int index = 0; index < 3000; ++index)
        path += "/a_directory_without_a_blank";
    RunningAlert alert(path + "\n" + path);
    ASSERT_TRUE(alert.waitForFirstPicture());
    EXPECT_LE(alert.window.height, 1024);
    EXPECT_GT(alert.count(0x103a70), 100) << "no ring around the focus";
    alert.user.press('a');
    alert.clickFromCorner(105, 35); // between two buttons
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(alert.result, 99);
    alert.clickFromCorner(40, 35);
    EXPECT_EQ(alert.finalResult(), 1);
}

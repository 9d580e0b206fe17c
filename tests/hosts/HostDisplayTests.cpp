// SPDX-License-Identifier: MIT
// The programs of examples/hosts, as their users and a window manager handle them. Each has the picture above
// a bar of its own, whose left end has the colour that a click on it gives to the picture.
#include <tests/support/RunProgram.h>
#include <tests/support/TemporaryFile.h>
#include <tests/support/X11Input.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>

// Behind the others: X11's macros take common words.
#include <tests/support/WindowManager.h>

#include <X11/Xutil.h>
#include <X11/keysym.h>

using namespace vx::test;

namespace {

class HostDisplayTest : public testing::TestWithParam<const char*> {
protected:
    void open(std::size_t number) {
        const std::string program = HOSTS "/host_" + std::string(GetParam());
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; }); // a window may be gone
        m_Program =
            popen(("exec " + program + " " + std::to_string(number) + " 2>" + log.path()).c_str(), "w");
        ASSERT_TRUE(waitFor([&] {
            const auto all = manager.clients(); // the list may be behind the windows
            return all.size() == number &&
                   std::ranges::all_of(all, [&](Window one) { return place(one).id; });
        }));
    }
    X11Input::Window place(Window window) const {
        XWindowAttributes is{};
        Window child = 0;
        XGetWindowAttributes(manager.server, window, &is);
        XTranslateCoordinates(manager.server, window, is.root, 0, 0, &is.x, &is.y, &child);
        return {is.map_state == IsViewable ? user.root() : 0, is.x, is.y, is.width, is.height};
    }
    bool isNormal(Window window) const {
        const auto state = manager.property(window, "WM_STATE");
        return !state.empty() && state[0] == NormalState;
    }
    // At the corners of the picture and the left end of the bar, after so many clicks.
    bool hasColors(Window window, int clicks) {
        constexpr unsigned grounds[] = {0x1d3557, 0x1f6f54, 0x7a3b69};
        const X11Input::Window at = place(window);
        if (!at.id)
            return false;
        const auto seen = user.pixels(at);
        const auto is = [&](int x, int y, int color) {
            return seen[std::size_t(y * at.width + x)] == grounds[color % 3];
        };
        const int right = at.width - 3, bottom = at.height - 51;
        return is(8, at.height - 24, clicks + 1) && is(2, 2, clicks) && is(right, 2, clicks) &&
               is(2, bottom, clicks) && is(right, bottom, clicks);
    }
    bool shows(Window window, int clicks) {
        if (!waitFor([&] { return hasColors(window, clicks); }))
            return false;
        const auto now = user.pixels(place(window));
        return waitFor([&] { return user.pixels(place(window)) != now; });
    }
    void click(Window window) {
        const X11Input::Window at = place(window);
        user.click(at.x + 20, at.y + at.height - 24);
    }
    void closeTheLast(Window window) {
        user.close({std::uint32_t(window)});
        EXPECT_EQ(pclose(m_Program), 0);
        EXPECT_EQ(run(std::string("grep -E 'Bad|rror|CRITICAL|WARNING|lost' ") + log.path()).output, "");
    }

    const WindowManager manager;
    X11Input user;
    const TemporaryFile log{""};

private:
    FILE* m_Program = nullptr;
};

TEST_P(HostDisplayTest, ShowsThePictureAndItsOwnWidgetsWhateverBecomesOfItsWindow) {
    ASSERT_NO_FATAL_FAILURE(open(1));
    const Window window = manager.clients().at(0);
    ASSERT_TRUE(shows(window, 0));
    for (const auto& [x, y, width, height] : {std::array{400, 300, 500, 300}, std::array{50, 80, 800, 600}}) {
        XMoveResizeWindow(manager.server, window, x, y, unsigned(width), unsigned(height));
        ASSERT_TRUE(waitFor([&, width = width] { return place(window).width == width; }));
        ASSERT_TRUE(shows(window, 0)) << width;
    }
    for (const auto hide : {XIconifyWindow, XWithdrawWindow}) {
        hide(manager.server, window, 0);
        ASSERT_TRUE(waitFor([&] { return !isNormal(window); }));
        XMapWindow(manager.server, window);
        ASSERT_TRUE(waitFor([&] { return isNormal(window); }));
        ASSERT_TRUE(shows(window, 0)) << (hide == XIconifyWindow ? "minimised" : "withdrawn");
    }
    click(window); // which gives the window the keyboard as well
    ASSERT_TRUE(shows(window, 1));
    user.press(XK_v);
    ASSERT_TRUE(waitFor([&] { return !hasColors(window, 1); })) << "the view has ended";
    click(window);
    user.press(XK_v);
    ASSERT_TRUE(shows(window, 2)) << "and the host lives on";
    closeTheLast(window);
}

TEST_P(HostDisplayTest, ClosesOneOfTwoWindowsWhileTheOtherGoesOn) {
    ASSERT_NO_FATAL_FAILURE(open(2));
    const std::vector<Window> both = manager.clients();
    XMoveWindow(manager.server, both[0], 10, 40);
    XMoveWindow(manager.server, both[1], 500, 500);
    ASSERT_TRUE(shows(both[0], 0) && shows(both[1], 0));
    user.close({std::uint32_t(both[0])});
    ASSERT_TRUE(waitFor([&] { return manager.clients().size() == 1; }) && shows(both[1], 0));
    closeTheLast(both[1]);
}

INSTANTIATE_TEST_SUITE_P(Examples, HostDisplayTest, testing::Values(HOST_NAMES),
                         [](const auto& info) { return std::string(info.param); });

} // namespace

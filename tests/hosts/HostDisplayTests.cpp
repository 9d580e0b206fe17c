// SPDX-License-Identifier: MIT
// The programs of examples/hosts, as their users and a window manager handle them. Each has the picture above
// a bar of its own, whose left end has the colour that a click on it gives to the picture.
#include <tests/support/TemporaryFile.h>
#include <tests/support/WaitFor.h>
#include <tests/support/X11Input.h>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iostream>

// Behind the others: its macros take common words.
#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <X11/keysym.h>

using namespace vx::test;

namespace {

struct Program {
    const char* path;
    const char* title;
};

void PrintTo(const Program& program, std::ostream* out) {
    *out << program.title;
}

constexpr unsigned kGrounds[] = {0x1d3557, 0x1f6f54, 0x7a3b69};
constexpr int kBar = 48;

pid_t start(std::vector<const char*> words, const char* log) {
    words.push_back(nullptr);
    const pid_t program = fork();
    if (program == 0) {
        dup2(dup2(open(log, O_WRONLY | O_APPEND), 1), 2);
        execvp(words[0], const_cast<char**>(words.data()));
        _exit(127);
    }
    return program;
}

class HostDisplayTest : public testing::TestWithParam<Program> {
protected:
    void SetUp() override {
        XSetErrorHandler([](Display*, XErrorEvent*) { return 0; }); // a window that was listed may be gone
        m_Manager = start({"openbox", "--sm-disable"}, "/dev/null");
        // It is at work when it has taken a window in; one that comes too early for it stays without.
        const Window probe = XCreateSimpleWindow(server, user.root(), 0, 0, 9, 9, 0, 0, 0);
        ASSERT_TRUE(waitFor([&] {
            XUnmapWindow(server, probe);
            XMapWindow(server, probe);
            return !clients().empty();
        }));
        XDestroyWindow(server, probe);
        ASSERT_TRUE(waitFor([&] { return clients().empty(); }));
    }
    void TearDown() override {
        for (const pid_t program : {m_Program, m_Manager})
            if (program > 0)
                kill(program, program == m_Manager ? SIGTERM : SIGKILL);
        while (wait(nullptr) > 0)
            continue;
        if (HasFailure())
            std::cerr << std::ifstream(log.path()).rdbuf();
        XCloseDisplay(server);
    }
    void open(const char* number) {
        if (!std::filesystem::exists(GetParam().path))
            GTEST_SKIP() << "its toolkit is not on this machine";
        m_Program = start({GetParam().path, number}, log.path());
        ASSERT_TRUE(waitFor([&] { return int(windows().size()) == std::atoi(number); }));
    }
    std::vector<Window> clients() const { return property(user.root(), "_NET_CLIENT_LIST"); }
    std::vector<Window> windows() const {
        std::vector<Window> all = clients();
        std::erase_if(all, [&](Window window) {
            char* name = nullptr;
            XFetchName(server, window, &name);
            const bool other = !name || std::string(name) != GetParam().title;
            XFree(name);
            return other;
        });
        return all;
    }
    X11Input::Window place(Window window) const {
        XWindowAttributes is{};
        Window child = 0;
        XGetWindowAttributes(server, window, &is);
        XTranslateCoordinates(server, window, is.root, 0, 0, &is.x, &is.y, &child);
        return {user.root(), is.x, is.y, is.width, is.height};
    }
    unsigned pixel(Window window, int x, int y) {
        const X11Input::Window at = place(window);
        return user.pixels({at.id, at.x + x, at.y + y, 1, 1})[0];
    }
    std::vector<unsigned> picture(Window window) {
        X11Input::Window at = place(window);
        at.height -= kBar;
        return user.pixels(at);
    }
    bool hasColors(Window window, unsigned ground, unsigned bar) {
        const X11Input::Window at = place(window);
        const int right = at.width - 3, bottom = at.height - kBar - 3;
        return pixel(window, 2, 2) == ground && pixel(window, right, 2) == ground &&
               pixel(window, 2, bottom) == ground && pixel(window, right, bottom) == ground &&
               pixel(window, 8, at.height - kBar / 2) == bar;
    }
    // The picture on its ground and in motion, the bar below it.
    bool shows(Window window, int clicks) {
        if (!waitFor([&] { return hasColors(window, kGrounds[clicks % 3], kGrounds[(clicks + 1) % 3]); }))
            return false;
        const auto now = picture(window);
        return waitFor([&] { return picture(window) != now; });
    }
    void click(Window window) {
        const X11Input::Window at = place(window);
        user.click(at.x + 20, at.y + at.height - kBar / 2);
    }
    bool isViewable(Window window) const {
        XWindowAttributes is{};
        return XGetWindowAttributes(server, window, &is) && is.map_state == IsViewable;
    }
    int status() {
        int status = -1;
        waitFor([&] { return waitpid(m_Program, &status, WNOHANG) == m_Program; });
        m_Program = 0;
        return status;
    }
    std::string complaints() const {
        std::ifstream stream(log.path());
        std::string all;
        for (std::string line; std::getline(stream, line);)
            for (const char* word : {"Bad", "rror", "CRITICAL", "WARNING"})
                if (line.find(word) != std::string::npos)
                    all += line + "\n";
        return all;
    }
    std::vector<Window> property(Window window, const char* name) const {
        Atom type = 0;
        int bits = 0;
        unsigned long count = 0, left = 0;
        unsigned char* value = nullptr;
        XGetWindowProperty(server, window, XInternAtom(server, name, False), 0, 99, False, AnyPropertyType,
                           &type, &bits, &count, &left, &value);
        const auto* const words = reinterpret_cast<const Window*>(value);
        const std::vector<Window> all(words, words + count);
        XFree(value);
        return all;
    }

    X11Input user;
    Display* server = XOpenDisplay(nullptr);
    TemporaryFile log{""};

private:
    pid_t m_Manager = 0, m_Program = 0;
};

TEST_P(HostDisplayTest, ShowsThePictureAndItsOwnWidgetsWhateverBecomesOfItsWindow) {
    ASSERT_NO_FATAL_FAILURE(open("1"));
    const Window window = windows().at(0);
    ASSERT_TRUE(shows(window, 0));
    click(window);
    ASSERT_TRUE(shows(window, 1));
    for (const auto& [x, y, width, height] : {std::array{400, 300, 500, 300}, std::array{50, 80, 800, 600}}) {
        XMoveResizeWindow(server, window, x, y, unsigned(width), unsigned(height));
        ASSERT_TRUE(waitFor([&, width = width] { return place(window).width == width; }));
        ASSERT_TRUE(shows(window, 1)) << width;
    }
    for (const bool minimised : {true, false}) {
        minimised ? XIconifyWindow(server, window, 0) : XWithdrawWindow(server, window, 0);
        ASSERT_TRUE(waitFor([&] { return !isViewable(window); }));
        XMapWindow(server, window);
        ASSERT_TRUE(waitFor([&] { return isViewable(window); }));
        ASSERT_TRUE(shows(window, 1)) << minimised;
    }
    click(window); // which gives the window the keyboard as well
    ASSERT_TRUE(shows(window, 2));
    user.press(XK_v);
    ASSERT_TRUE(waitFor([&] { return pixel(window, 2, 2) != kGrounds[2]; })) << "the view has ended";
    click(window);
    const int middle = place(window).height - kBar / 2;
    ASSERT_TRUE(waitFor([&] { return pixel(window, 8, middle) == kGrounds[1]; })) << "and the host lives on";
    user.press(XK_v);
    ASSERT_TRUE(shows(window, 3));
    user.close({std::uint32_t(window)});
    EXPECT_EQ(status(), 0);
    EXPECT_EQ(complaints(), "");
}

TEST_P(HostDisplayTest, ClosesOneOfTwoWindowsWhileTheOtherGoesOn) {
    ASSERT_NO_FATAL_FAILURE(open("2"));
    const std::vector<Window> both = windows();
    XMoveWindow(server, both[0], 10, 40);
    XMoveWindow(server, both[1], 500, 500);
    ASSERT_TRUE(shows(both[0], 0) && shows(both[1], 0));
    user.close({std::uint32_t(both[0])});
    ASSERT_TRUE(waitFor([&] { return windows().size() == 1; }) && shows(both[1], 0));
    user.close({std::uint32_t(both[1])});
    EXPECT_EQ(status(), 0);
    EXPECT_EQ(complaints(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Hosts, HostDisplayTest,
    testing::Values(Program{HOSTS "/host_gtk3", "GTK 3"}, Program{HOSTS "/host_qt6", "Qt 6"},
                    Program{HOSTS "/host_sdl2", "SDL 2"}, Program{HOSTS "/host_glfw", "GLFW"}),
    [](const auto& info) { return std::filesystem::path(info.param.path).filename().string(); });

} // namespace

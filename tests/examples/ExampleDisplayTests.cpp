// SPDX-License-Identifier: MIT
// The examples with several windows, as their users handle them, on a server with two displays: DUMMY0 and,
// right of it from x = 1280, DUMMY1.
#include <tests/support/TemporaryFile.h>
#include <tests/support/WaitFor.h>
#include <tests/support/X11Input.h>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>

using namespace vx::test;

namespace {

constexpr const char* kOnTheSecond = "Output is on DUMMY1 - B: back";

class ExampleDisplayTest : public testing::Test {
protected:
    void start(std::vector<const char*> words) {
        words.push_back(nullptr);
        m_Program = fork();
        if (m_Program == 0) {
            execv(words[0], const_cast<char**>(words.data()));
            _exit(127);
        }
    }
    int status() {
        int status = -1;
        waitFor([&] { return waitpid(m_Program, &status, WNOHANG) == m_Program; });
        return status;
    }
    bool shows(const char* title, std::size_t number = 1) {
        return waitFor([&] { return user.windows(title).size() == number; });
    }
    bool moves(const char* title) {
        const auto window = user.windows(title).at(0);
        const auto now = user.pixels({window.id, 0, 0, window.width, window.height});
        return waitFor([&] { return user.pixels({window.id, 0, 0, window.width, window.height}) != now; });
    }
    // The mark in the display's corner.
    bool isOnTheSecond() {
        return waitFor([&] { return user.pixels({user.root(), 1282, 2, 1, 1})[0] == 0xff8c19; });
    }

    X11Input user;
    pid_t m_Program = 0;
};

TEST_F(ExampleDisplayTest, ScenesGoOnWithoutAViewThatWasClosedAndEndWithTheMainOne) {
    start({TWO_VIEWS, "--size", "160x120"});
    ASSERT_TRUE(shows("front") && shows("above") && shows("side") && moves("above"));
    user.close(user.windows("above").at(0));
    ASSERT_TRUE(shows("above", 0) && moves("side") && moves("front"));
    user.close(user.windows("front").at(0));
    EXPECT_EQ(status(), 0);
}

TEST_F(ExampleDisplayTest, TheOutputGoesToADisplayAndBackAndThereAgainInTheNextRun) {
    const TemporaryFile file("");
    std::filesystem::remove(file.path());
    for (const bool again : {false, true}) {
        start({OUTPUT_SCREEN, "--settings", file.path()});
        if (!again) {
            ASSERT_TRUE(shows("Output") && moves("Output"));
            user.press('2');
        }
        ASSERT_TRUE(shows(kOnTheSecond) && isOnTheSecond());
        ASSERT_EQ(std::system("xrandr --output DUMMY1 --off"), 0);
        ASSERT_EQ(std::system("xrandr --output DUMMY1 --mode 1024x768_75 --pos 1280x0"), 0);
        ASSERT_TRUE(isOnTheSecond());
        if (again) {
            user.press('b');
            ASSERT_TRUE(shows("Output") && moves("Output"));
            user.press('2'); // the window that has it back has the keyboard too
            ASSERT_TRUE(shows(kOnTheSecond));
            user.press('b');
            ASSERT_TRUE(shows("Output") && moves("Output"));
        }
        user.close(user.windows(again ? "Output" : kOnTheSecond).at(0));
        EXPECT_EQ(status(), 0);
        std::ifstream stream(file.path());
        const std::string kept{std::istreambuf_iterator<char>(stream), {}};
        EXPECT_NE(kept.find(again ? "\"ShouldFitScreen\": 0" : "\"ShouldFitScreen\": 1"), std::string::npos)
            << kept;
    }
}

TEST_F(ExampleDisplayTest, TheGalleryFillsTheDisplayThatIsNamed) {
    constexpr const char* title = "A Julia set in relief";
    start({GALLERY, "--scene", "fractal", "--display", "DUMMY1", "--size", "160x120"});
    EXPECT_TRUE(waitFor([&] {
        const auto windows = user.windows(title);
        return windows.size() == 1 && windows[0].x == 1280 && windows[0].width == 1024;
    }));
    kill(m_Program, SIGTERM);
    status();
}

TEST_F(ExampleDisplayTest, TheGalleryChangesScenesByNumbersAndArrowsAndFillsTheDisplay) {
    constexpr const char *first = "A Julia set in relief", *second = "A lit room through filters";
    start({GALLERY, "--size", "160x120"});
    ASSERT_TRUE(shows(first) && moves(first));
    user.press('2');
    ASSERT_TRUE(shows(second) && moves(second));
    constexpr std::uint32_t left = 0xff51, escape = 0xff1b;
    user.press(left);
    ASSERT_TRUE(shows(first));
    user.press(left); // around to the last one
    ASSERT_TRUE(shows(first, 0));
    user.press('2');
    ASSERT_TRUE(shows(second) && moves(second));
    user.press('f');
    ASSERT_TRUE(waitFor([&] {
        const auto windows = user.windows(second);
        return windows.size() == 1 && windows[0].width == 1280;
    }));
    user.press(escape);
    EXPECT_EQ(status(), 0);
}

} // namespace

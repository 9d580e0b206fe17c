// SPDX-License-Identifier: MIT
// The doctor on a server with two displays.
#include <tests/support/RunProgram.h>
#include <tests/support/WaitFor.h>
#include <tests/support/X11Input.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>
#include <thread>

using namespace vx::test;

namespace {

Result runHere(const std::string& command) {
    return run("env DISPLAY=" + std::string(std::getenv("DISPLAY")) + " " + command);
}

TEST(DoctorDisplayTest, TellsOfBothDisplaysAndOfTheServersOwnRefreshes) {
    const Result result = runHere(DOCTOR);
    EXPECT_EQ(result.status, 0) << result.output;
    // On a busy machine the last refresh may be one without an event, which the log says.
    const bool lacked = result.output.find("no Present events for") != std::string::npos;
    for (const char* line :
         {"  log +Platform: x11, DISPLAY is ", "  DUMMY0 .* 1280 x 1024 at \\(0, 0\\), 60",
          "  DUMMY1 .* 1024 x 768 at \\(1280, 0\\), 75", "  display +DUMMY0, 60",
          "  log +Display link: 60.00 Hz by Present events",
          lacked ? "  throttle +(Present events|absolute deadlines), " : "  throttle +Present events, ",
          "  a pixel read back +as drawn\n"})
        EXPECT_TRUE(std::regex_search(result.output, std::regex(line))) << line << "\n" << result.output;
}

TEST(DoctorDisplayTest, IsNotWellWhereTheWindowIsClosedUnderIt) {
    std::thread user([] {
        X11Input input;
        const auto isDrawn = [&] {
            const auto windows = input.windows("vx_doctor");
            return windows.size() == 1 && input.pixels({windows[0].id, 9, 9, 1, 1})[0] == 0x336699;
        };
        if (waitFor(isDrawn))
            input.close(input.windows("vx_doctor")[0]);
    });
    const Result result = runHere(DOCTOR);
    user.join();
    EXPECT_EQ(result.status, 1) << result.output;
    EXPECT_NE(result.output.find("\nNot well: no frames, since the window has been closed"),
              std::string::npos)
        << result.output;
}

} // namespace

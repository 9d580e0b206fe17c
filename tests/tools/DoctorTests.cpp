// SPDX-License-Identifier: MIT
// The doctor as its users start it.
#include <tests/support/Picture.h>
#include <tests/support/RunProgram.h>
#include <tests/support/TemporaryFile.h>

#include <gtest/gtest.h>

#include <regex>

using namespace vx::test;

namespace {

TEST(DoctorTest, TellsWhatThereIsAndDrawsThePicture) {
    const TemporaryFile file("");
    const Result result = run(std::string(DOCTOR " --platform headless --picture ") + file.path());
    EXPECT_EQ(result.status, 0) << result.output;
    for (const char* line :
         {"  this one +VX_OpenGL64 \\d+\\.\\d+\\.\\d+\n", "  windows and input +SDL 2\\.",
          "  text +pango \\d", "  PNG +libpng \\d", "  TIFF +libtiff \\d[.0-9]+\n", "  TGA +VX_OpenGL64\n",
          "  Arial Black +\\w[^/]*, /.*[tT]", "  log +Platform: headless, chosen by the host\n",
          "  Headless +number 1, 1920 x 1080 at \\(0, 0\\), 60.00 Hz\n", "  EGL version +1\\.",
          "  GL renderer +\\w", "  GL_EXT_framebuffer_object +there\n", "  throttle +absolute deadlines, ",
          "  frames +\\d+ in ", "  interval +mean \\d", "  deviation from it +p50 .*p99 .*worst ",
          "  lost refreshes +\\d", "  a pixel read back +as drawn\n", "\nA view can run here.\n$"})
        EXPECT_TRUE(std::regex_search(result.output, std::regex(line))) << line << "\n" << result.output;
    const Picture picture(file.path());
    ASSERT_TRUE(picture.width == 1280 && picture.height == 720);
    EXPECT_EQ(picture.at(2, 2), 0x660000ffu) << "a corner's mark";
    EXPECT_EQ(picture.at(640, 360), 0x333333ffu) << "the disc";
    EXPECT_EQ(picture.at(200, 500), 0x0000ffffu) << "the second bar, below the disc's middle";
}

TEST(DoctorTest, NamesInItsLastLineWhatIsMissing) {
    struct {
        const char *command, *told;
        int status;
    } const rows[] = {
        {DOCTOR, "Not well: no platform: No display: DISPLAY is not set", 1},
        {"env DISPLAY=:nowhere " DOCTOR, "Not well: no platform: No display: the X server :nowhere", 1},
        {DOCTOR " --platform nowhere", "Not well: no platform: There is no platform \"nowhere\"", 1},
        {DOCTOR " --platform headless --picture /no/such/folder.png",
         "Not well: no calibration picture: /no/such/folder.png", 1},
        {DOCTOR " --nonsense", "usage: ", 2},
        {DOCTOR " --picture", "usage: ", 2},
        {DOCTOR " --help", "picture was not written, and with 2", 0}};
    for (const auto& row : rows) {
        const Result result = run(row.command);
        EXPECT_EQ(result.status, row.status) << row.command;
        const std::size_t lastLine = result.output.rfind('\n', result.output.size() - 2) + 1;
        EXPECT_EQ(result.output.find(row.told, lastLine), lastLine) << row.command << "\n" << result.output;
    }
}

} // namespace

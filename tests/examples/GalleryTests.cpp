// SPDX-License-Identifier: MIT
// The gallery's pictures against those in docs/images/gallery, and its films.
#include <tests/support/Picture.h>
#include <tests/support/RunProgram.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

using vx::test::Picture;
using vx::test::Result;
using vx::test::run;

namespace {

std::vector<std::string> sceneNames() {
    std::istringstream lines(run(GALLERY " --list").output);
    std::vector<std::string> names;
    for (std::string name; std::getline(lines, name);)
        names.push_back(name);
    return names;
}

struct Difference {
    double mean = 255.0, farOff = 1.0;
};

// Of 255, over all colours; and the share of pixels with a colour that differs by more than 48.
Difference between(const Picture& one, const Picture& other) {
    if (one.pixels.empty() || one.width != other.width || one.height != other.height)
        return {};
    double sum = 0.0, far = 0.0;
    for (std::size_t i = 0; i < one.pixels.size(); ++i) {
        int largest = 0;
        for (const int shift : {8, 16, 24}) {
            const int difference = std::abs(static_cast<int>(one.pixels[i] >> shift & 255) -
                                            static_cast<int>(other.pixels[i] >> shift & 255));
            sum += difference;
            largest = std::max(largest, difference);
        }
        far += largest > 48 ? 1.0 : 0.0;
    }
    const auto pixels = static_cast<double>(one.pixels.size());
    return {sum / 3.0 / pixels, far / pixels};
}

std::string bytes(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class GalleryTest : public testing::TestWithParam<std::string> {
protected:
    ~GalleryTest() override { std::filesystem::remove_all(folder); }
    Result draw(const std::string& options, const char* to = "") {
        return run(GALLERY " --headless " + folder + to + " " + options);
    }
    const std::string folder =
        (std::filesystem::temp_directory_path() / ("vx_gallery_" + std::to_string(getpid()) + "/")).string();
};

// Another driver rounds otherwise, which shows at edges; a scene that lacks a pass shows all over.
TEST_P(GalleryTest, LooksAsInTheDocs) {
    const Result result = draw("--scene " + GetParam());
    ASSERT_EQ(result.status, 0) << result.output;
    const Difference difference =
        between(Picture(folder + GetParam() + ".png"), Picture(GALLERY_PICTURES "/" + GetParam() + ".png"));
    EXPECT_LT(difference.mean, 1.5);
    EXPECT_LT(difference.farOff, 0.02);
    if (HasFailure())
        std::filesystem::copy(
            folder, "gallery_as_drawn",
            std::filesystem::copy_options::recursive | std::filesystem::copy_options::overwrite_existing);
}

INSTANTIATE_TEST_SUITE_P(Scene, GalleryTest, testing::ValuesIn(sceneNames()),
                         [](const auto& test) { return test.param; });

TEST_F(GalleryTest, AFrameIsTheSameFileWhicheverRangeItCameFrom) {
    for (const std::string scene : {"lit_room", "feedback", "particles", "views"}) {
        const std::string options = " --size 160x90 --rate 25 --scene " + scene;
        EXPECT_EQ(draw("--frames 0-12" + options, "a").status, 0);
        EXPECT_EQ(draw("--frames 11-13" + options, "b").status, 0);
        EXPECT_FALSE(std::filesystem::exists(folder + "b/" + scene + "_00010.png"));
        const std::string frame = scene + "_00011.png", next = scene + "_00012.png";
        EXPECT_FALSE(bytes(folder + "a/" + frame).empty());
        EXPECT_TRUE(bytes(folder + "a/" + frame) == bytes(folder + "b/" + frame)) << scene;
        EXPECT_TRUE(bytes(folder + "a/" + next) == bytes(folder + "b/" + next)) << scene;
        EXPECT_FALSE(bytes(folder + "a/" + frame) == bytes(folder + "a/" + next)) << scene << " stands still";
    }
}

TEST_F(GalleryTest, ASceneIsTheSameAfterOthers) {
    const std::string options = "--frames 2-2 --size 160x90";
    ASSERT_EQ(draw(options, "all").status, 0);
    for (const std::string& scene : sceneNames()) {
        ASSERT_EQ(draw(options + " --scene " + scene, "one").status, 0);
        const std::string file = "/" + scene + "_00002.png";
        EXPECT_TRUE(bytes(folder + "all" + file) == bytes(folder + "one" + file)) << scene;
    }
}

TEST_F(GalleryTest, EachKeySwitchesItsFilterInTheRoom) {
    std::set<std::vector<std::uint32_t>> pictures;
    for (const char* keys : {"", "a", "b", "c", "k", "abc"}) {
        const std::string pressed = *keys ? std::string(" --keys ") + keys : "";
        ASSERT_EQ(draw("--frames 4-5 --scene lit_room --size 320x180" + pressed).status, 0);
        EXPECT_TRUE(pictures.insert(Picture(folder + "lit_room_00005.png").pixels).second) << keys;
    }
}

TEST_F(GalleryTest, WhatItCannotShowIsToldInOneLine) {
    const std::pair<const char*, const char*> bad[] = {{"--scene nonsense", "There is no scene \"nonsense\""},
                                                       {"--frames 5-4", "usage: "},
                                                       {"--frames 3", "usage: "},
                                                       {"--rate 0", "usage: "},
                                                       {"--scene", "usage: "}};
    for (const auto& [options, told] : bad) {
        const Result result = draw(options);
        EXPECT_EQ(result.status, 2) << options;
        EXPECT_EQ(result.output.rfind(told, 0), 0u) << result.output;
        EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1) << result.output;
    }
    EXPECT_EQ(run(GALLERY " --frames 1-2").status, 2) << "to where?";
    EXPECT_EQ(run(GALLERY " --scene fractal --headless /proc/none").status, 1);
}

} // namespace

// SPDX-License-Identifier: MIT
// The example programs as their users start them, and the program in the README.
#define main turningBoxMain
#include <docs/snippets/turning_box.cpp>
#undef main

#include <tests/support/Picture.h>
#include <tests/support/RunProgram.h>

#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <set>
#include <vector>

using vx::test::Picture;
using vx::test::Result;
using vx::test::run;

namespace {

class ExampleTest : public testing::Test {
protected:
    ExampleTest() { std::filesystem::create_directories(folder); }
    ~ExampleTest() override { std::filesystem::remove_all(folder); }

    std::string path(const char* name) const { return (folder / name).string(); }
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("vx_examples_" + std::to_string(getpid()));
};

TEST_F(ExampleTest, PicturesHaveTheSizeAskedAndAreTheSameOnEveryRun) {
    for (const char* program : {FIRST_PICTURE, MESH_VIEWER, TWO_VIEWS}) {
        const auto draw = [&](const char* name, const char* frames) {
            const std::string options = " --size 200x120 --frames " + std::string(frames) + " --headless ";
            const Result result = run(program + options + path(name));
            EXPECT_EQ(result.status, 0) << result.output;
            return Picture(path(name));
        };
        const Picture first = draw("first.png", "2");
        EXPECT_TRUE(first.width == 200 && first.height == 120);
        EXPECT_GT(first.colours(), 100u) << program;
        EXPECT_EQ(first.pixels, draw("again.png", "2").pixels) << program;
        EXPECT_NE(first.pixels, draw("later.png", "20").pixels) << program << " does not move";
    }
    const Picture above(path("later_above.png")), side(path("later_side.png"));
    EXPECT_TRUE(above.width == 100 && above.colours() > 100 && side.colours() > 100);
    EXPECT_NE(above.pixels, side.pixels);
}

TEST_F(ExampleTest, TheSheetOfShapesIsWholeInAnyShapeOfWindow) {
    for (const char* size : {"300x100", "160x120", "100x300"}) {
        const std::string options = " --size " + std::string(size) + " --headless ";
        ASSERT_EQ(run(MESH_VIEWER + options + path("sheet.png")).status, 0);
        EXPECT_TRUE(Picture(path("sheet.png")).borderIsOneColour()) << size;
    }
}

TEST_F(ExampleTest, TheViewerTellsWhatAFileHasAndWhatItPassedBy) {
    const Result result =
        run(MESH_VIEWER " " X_FILE " --smooth --wireframe --size 64x64 --headless " + path("mesh.png"));
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.output.find(" 0 triangles"), std::string::npos) << result.output;
    EXPECT_NE(result.output.find("1 AnimationSet, 1 Frame, 1 Header, 1 template, 1 { skipped"),
              std::string::npos)
        << result.output;
    EXPECT_EQ(Picture(path("mesh.png")).width, 64);
    std::ofstream(path("mixed.x"))
        << "xof 0303txt 0032\nMesh{4;0;0;0;,1;0;0;,1;1;0;,0;1;0;;2;3;0,1,2;,4;0,1,2,3;;"
           "MeshNormals{1;0;0;1;;2;3;0,0,0;,4;0,0,0,0;;}}";
    EXPECT_NE(run(MESH_VIEWER " " + path("mixed.x") + " --headless " + path("mixed.png"))
                  .output.find("3 triangles (of 1 quads and 1 triangles)"),
              std::string::npos);
}

TEST_F(ExampleTest, PicturesAreShownBesideThoseThatTellWhyTheyAreNot) {
    const std::string cut = path("cut.png"), sheet = " --headless " + path("sheet.png");
    std::ofstream(cut) << std::ifstream(PICTURE).rdbuf();
    std::filesystem::resize_file(cut, 2000);
    const Result result = run(PICTURES " --loaders " PICTURE " " + cut + " --text A --pattern" + sheet);
    EXPECT_EQ(result.status, 0) << result.output;
    EXPECT_NE(result.output.find(cut + ": the file is cut short"), std::string::npos) << result.output;
    EXPECT_TRUE(Picture(path("sheet.png")).colours() > 100 && Picture(path("sheet.png")).borderIsOneColour());
    EXPECT_EQ(run(PICTURES " " + cut + sheet).status, 1);
}

TEST_F(ExampleTest, TheOutputGoesToWhereItsSettingsSayIfTheyCanBeHad) {
    const std::string program = OUTPUT_SCREEN " --frames 1 --headless " + path("a.png");
    EXPECT_NE(run(OUTPUT_SCREEN " --platform headless --list").output.find("Headless   1920 x 1080   60 Hz"),
              std::string::npos);
    ASSERT_EQ(run(program + " --display Headless --settings " + path("kept")).status, 0);
    ASSERT_EQ(run(program + " --settings " + path("kept")).status, 0);
    EXPECT_EQ(Picture(path("a.png")).width, 1920) << "what the run before has kept";

    struct {
        const char *settings, *told;
    } const others[] = {
        {R"({"ShouldFitScreen": true, "TargetScreenName": "Gone", "Width": 64, "Height": 48})",
         "no display \"Gone\""},
        {R"({"ShouldFitScreen": [], "Width": -5, "Height": 1e99, "OffsetX": "far", "TargetScreenName": 7})",
         ""},
        {R"({"ShouldFitScreen": true, "TargetScre)", "not a file of settings"}};
    for (const auto& other : others) {
        std::ofstream(path("other")) << other.settings;
        const Result result = run(program + " --settings " + path("other"));
        EXPECT_EQ(result.status, 0) << result.output;
        EXPECT_NE(result.output.find(other.told), std::string::npos) << result.output;
        EXPECT_EQ(Picture(path("a.png")).width, &other == others ? 64 : 640) << other.settings;
    }
    EXPECT_EQ(std::filesystem::file_size(path("other")), std::string(others[2].settings).size())
        << "not read, so left";
    EXPECT_NE(run(program + " --settings " + path("no/such/folder")).output.find("cannot be written"),
              std::string::npos);
}

TEST_F(ExampleTest, WhatCannotBeDoneIsToldAndGivesItsStatus) {
    const std::string first = FIRST_PICTURE, viewer = MESH_VIEWER, recording = RECORDING;
    for (const char* bad :
         {"--nonsense", "--size 0x20", "--size 20x20x", "--frames many", "--headless", "one.x two.x"}) {
        const Result result = run(viewer + " " + bad);
        EXPECT_EQ(result.status, 2) << bad;
        EXPECT_NE(result.output.find("usage: " + viewer), std::string::npos) << result.output;
    }
    EXPECT_EQ(run(recording).status, 2);

    struct {
        std::string command, told;
    } const failures[] = {{viewer + " " + path("none.x"), "none.x: not an X text file"},
                          {first + " --headless " + path("no/such/folder.png"), "no/such/folder.png"},
                          {recording + " " X_FILE, "frame_00000.png"},
                          {first + " --platform nonsense", "nonsense"},
                          {viewer + " --headless " + path("x.png") + " --platform nonsense", "nonsense"}};
    for (const auto& failure : failures) {
        const Result result = run(failure.command);
        EXPECT_EQ(result.status, 1) << failure.command;
        EXPECT_NE(result.output.find(failure.told), std::string::npos) << result.output;
    }
}

TEST_F(ExampleTest, ARecordingIsAHundredFramesThatMove) {
    const Result result = run(RECORDING " " + path("made"));
    EXPECT_EQ(result.status, 0) << result.output;
    std::set<std::vector<std::uint32_t>> pictures;
    for (const char* name : {"made/frame_00000.png", "made/frame_00010.png", "made/frame_00099.png"}) {
        pictures.insert(Picture(path(name)).pixels);
        EXPECT_GT(Picture(path(name)).colours(), 100u) << name;
    }
    EXPECT_EQ(pictures.size(), 3u);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(path("made")), {}), 100);
}

TEST_F(ExampleTest, TheBoxInTheReadmeIsWholeInAnyShapeOfWindow) {
    const auto pipeline = NSInit(new BoxPipeline);
    const std::pair<int, int> sizes[] = {{160, 90}, {90, 160}, {100, 100}, {40, 320}, {320, 40}};
    for (const auto& [width, height] : sizes) {
        const auto host = VX_GLHost::open(
            pipeline.get(), {.width = width, .height = height, .headless = true, .stepped = true});
        ASSERT_TRUE(host && host->record(path("").c_str(), 0, 17, 2.0)); // a whole turn in 9 s
        for (const auto& file : std::filesystem::directory_iterator(folder)) {
            const Picture picture(file.path().string());
            ASSERT_TRUE(picture.borderIsOneColour()) << file.path() << " of " << width << " x " << height;
            EXPECT_GT(picture.colours(), 50u) << file.path() << " of " << width << " x " << height;
        }
    }
}

} // namespace

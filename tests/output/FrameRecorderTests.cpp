// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_GLFrameRecorder.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/GLTest.h>
#include <tests/support/Picture.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <thread>

#include <unistd.h>

using Behind = VX_GLFrameRecorderBehind;

namespace {

/// A context with 4 x 2 pixels, and a folder that goes with it.
struct FrameRecorder : testing::Test {
    FrameRecorder() { std::filesystem::create_directories(folder); }
    ~FrameRecorder() override { std::filesystem::remove_all(folder); }

    /// A frame whose rows tell it from every other one: as it is written, the top row first.
    static std::string draw(int number) {
        const int shade = number % 256;
        clearTo(float(shade) / 255.0f, 0, 1, 0, 1, 4, 1);
        clearTo(0, float(shade) / 255.0f, 0, 0, 0, 4, 1);
        std::string rows;
        for (int i = 0; i < 4; ++i)
            rows += {char(255), 0, char(shade), char(255)};
        for (int i = 0; i < 4; ++i)
            rows += {0, char(shade), 0, char(255)};
        return rows;
    }
    std::string fileNamed(const std::string& name) const {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::string into(const std::string& name) const { return "cat > " + (folder / name).string(); }

    HeadlessContext context{4, 2};
    LogCollector log;
    const std::filesystem::path folder =
        std::filesystem::path(testing::TempDir()) / ("vx_recorder_" + std::to_string(getpid()));
    VX_GLFrameRecorder recorder;
};

} // namespace

TEST_F(FrameRecorder, WritesEveryFrameInOrderWhereItWaits) {
    VX_GLRenderTarget target;
    target.SetResolution(4, 2);
    target.CreateFrameBuffer();
    target.AddTexture2DBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    for (const bool fences : {true, false}) {
        vx::currentGLCapabilities().sync = fences;
        ASSERT_TRUE(recorder.OpenProgram(into("film").c_str(), 4, 2, Behind::wait, 3));
        std::string film;
        for (int i = 0; i < 200; ++i) {
            if (i % 2)
                target.Bind(0);
            film += draw(i);
            if (i % 2)
                target.Unbind();
            glReadBuffer(GL_NONE);
            glBindFramebufferEXT(GL_READ_FRAMEBUFFER_EXT, i % 3 ? 0 : target.m_FrameBuffer);
            glPixelStorei(GL_PACK_SKIP_PIXELS, 2);
            const auto state = [] {
                return stateOf(GL_FRAMEBUFFER_BINDING_EXT, GL_READ_FRAMEBUFFER_BINDING_EXT, GL_READ_BUFFER,
                               GL_PIXEL_PACK_BUFFER_BINDING, GL_PACK_SKIP_PIXELS);
            };
            const auto before = state();
            EXPECT_TRUE(i % 2 ? recorder.TakeFrame(&target, 0) : recorder.TakeFrame());
            EXPECT_EQ(state(), before);
        }
        EXPECT_TRUE(recorder.Finish());
        EXPECT_EQ(fileNamed("film"), film);
        EXPECT_EQ(recorder.GetWrittenFrames(), 200u);
        EXPECT_EQ(recorder.GetDroppedFrames(), 0u);
    }
    EXPECT_FALSE(recorder.TakeFrame()) << "nothing is open";
    EXPECT_FALSE(recorder.TakeFrame(&target, 1));
    EXPECT_EQ(log.count("VX_GLFrameRecorder::TakeFrame: the target has no colour attachment 1"), 1);
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_F(FrameRecorder, NumbersPicturesWithoutAGap) {
    for (const int count : {3, 2}) {
        const auto pictures = folder / std::to_string(count) / "made";
        ASSERT_TRUE(recorder.OpenPictures(pictures.c_str(), 4, 2, Behind::wait));
        for (int i = 0; i < count; ++i) {
            draw(100 + i);
            EXPECT_TRUE(recorder.TakeFrame());
        }
    }
    EXPECT_TRUE(recorder.Finish());
    EXPECT_TRUE(std::filesystem::exists(folder / "3/made/frame_00002.png")) << "opening another finishes it";
    EXPECT_FALSE(std::filesystem::exists(folder / "2/made/frame_00002.png"));
    const Picture second((folder / "2/made/frame_00001.png").string());
    EXPECT_EQ(second.pixels, (std::vector<std::uint32_t>{0x6500FFFF, 0x6500FFFF, 0x6500FFFF, 0x6500FFFF,
                                                         0x006500FF, 0x006500FF, 0x006500FF, 0x006500FF}));
    EXPECT_EQ(recorder.GetWrittenFrames(), 2u) << "of the second alone";
}

// A program that ends early, one that takes nothing, one that cannot be had.
TEST_F(FrameRecorder, DropsAndCountsWhatAProgramDoesNotTake) {
    const auto record = [&](const std::string& command, Behind behind, int frames) {
        EXPECT_TRUE(recorder.OpenProgram(command.c_str(), 4, 2, behind, 2)) << command;
        int taken = 0;
        for (int i = 0; i < frames; ++i) {
            taken += recorder.TakeFrame();
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        EXPECT_FALSE(recorder.Finish()) << command;
        EXPECT_EQ(recorder.GetWrittenFrames() + recorder.GetDroppedFrames(), unsigned(frames)) << command;
        return taken;
    };
    EXPECT_EQ(record("head -c 32 > /dev/null", Behind::wait, 300), 300) << "none waits for one who has gone";
    EXPECT_GT(recorder.GetDroppedFrames(), 0u);
    EXPECT_EQ(log.count("from here on frames are dropped"), 1);
    record("no_such_program_at_all 2> /dev/null", Behind::drop, 30);
    record("cat > /dev/null; exit 3", Behind::wait, 3);
    EXPECT_EQ(recorder.GetWrittenFrames(), 3u) << "it took them, and failed";

    for (const auto& [width, height] : {std::pair(0, 2), {4, -1}, {20000, 2}})
        EXPECT_FALSE(recorder.OpenProgram("cat", width, height, Behind::wait));
    std::ofstream(folder / "file") << "in the way";
    EXPECT_FALSE(recorder.OpenPictures((folder / "file/below").c_str(), 4, 2, Behind::wait));
    EXPECT_TRUE(recorder.Finish() && !recorder.IsOpen());
}

TEST_F(FrameRecorder, NeverHoldsAFrameUpWhereItDrops) {
    HeadlessContext large(512, 512);
    clearTo(1, 0, 0);
    clearTo(0, 1, 0, 0, 300, 512, 212);
    std::string film;
    for (int row = 0; row < 512; ++row)
        for (int i = 0; i < 512; ++i)
            film += row < 212 ? std::string({0, char(255), 0, char(255)})
                              : std::string({0, 0, char(255), char(255)});
    ASSERT_TRUE(recorder.OpenProgram(("sleep 1; " + into("film")).c_str(), 512, 512, Behind::drop));
    const auto start = std::chrono::steady_clock::now();
    int taken = 0;
    for (int i = 0; i < 40; ++i)
        taken += recorder.TakeFrame();
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(800));
    EXPECT_TRUE(taken > 0 && taken < 40) << taken;
    EXPECT_TRUE(recorder.Finish()) << "what was taken is written";
    EXPECT_EQ(recorder.GetWrittenFrames(), unsigned(taken));
    EXPECT_EQ(recorder.GetDroppedFrames(), unsigned(40 - taken));
    const std::string written = fileNamed("film");
    ASSERT_EQ(written.size(), film.size() * std::size_t(taken));
    for (int i = 0; i < taken; ++i)
        EXPECT_EQ(written.compare(film.size() * std::size_t(i), film.size(), film), 0) << i;
}

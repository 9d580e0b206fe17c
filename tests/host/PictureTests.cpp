// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLHost.h>
#include <VX_OpenGL64/targets/VX_GLPictureFile.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <tests/support/Picture.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>

#include <filesystem>

using namespace vx::test;

namespace {

class PictureTest : public HeadlessTest {
protected:
    PictureTest() { std::filesystem::create_directories(folder); }
    ~PictureTest() override { std::filesystem::remove_all(folder); }

    std::string path(const char* name) const { return (folder / name).string(); }
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("vx_pictures_" + std::to_string(getpid()));
};

void drawMark() {
    clearTo(0, 1, 0);
    clearTo(1, 0, 0, 0, 0, 32, 48);
    clearTo(0, 0, 1, 0, 0, 4, 4);
}

void expectMark(const Picture& picture) {
    ASSERT_EQ(picture.pixels.size(), 64u * 48u);
    EXPECT_EQ(picture.at(0, 0), 0xFF0000FFu);
    EXPECT_EQ(picture.at(63, 0), 0x00FF00FFu);
    EXPECT_EQ(picture.at(0, 47), 0x0000FFFFu) << "the lower left is the last row's first pixel";
}

} // namespace

TEST_F(PictureTest, AFrameIsSavedFromAHookFromAnotherThreadAndByStep) {
    Stage stage(Stage::Draws::byItself);
    std::atomic<int> inHook{-1};
    stage.onRender([&] {
        drawMark();
        if (inHook < 0)
            inHook = stage.view->SaveFrame(path("hook.png").c_str());
    });
    EXPECT_TRUE(stage.view->SaveFrame(path("thread.png").c_str()));
    EXPECT_TRUE(waitFor([&] { return inHook == 1; }));
    expectMark(Picture(path("thread.png")));
    expectMark(Picture(path("hook.png")));

    LogCollector log;
    EXPECT_FALSE(stage.view->StepFrame(0.0)) << "it draws by itself";
    EXPECT_FALSE(stage.view->SaveFrame(path("no/such/folder.png").c_str()));
    EXPECT_EQ(log.count("folder.png cannot be written"), 1);
    stage.view->stopRenderThread();
    EXPECT_TRUE(stage.view->StepFrame(0.0, path("step.png").c_str()));
    expectMark(Picture(path("step.png")));
    EXPECT_FALSE(stage.view->SaveFrame(path("never.png").c_str())) << "no frame comes";
}

TEST_F(PictureTest, ATargetIsSavedWithItsAlphaWhateverTheHostHasBound) {
    Stage stage;
    stage.view->makeCurrentContext();
    VX_GLRenderTarget target;
    target.SetResolution(3, 2); // rows that no alignment fits
    target.CreateFrameBuffer();
    for (int i = 0; i < 2; ++i)
        target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    target.Bind(1);
    glClearColor(1, 0, 0.2f, 0.4f);
    glClear(GL_COLOR_BUFFER_BIT);
    target.Unbind();
    GLuint buffer = 0;
    glGenBuffers(1, &buffer);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
    glPixelStorei(GL_PACK_ROW_LENGTH, 100);
    EXPECT_TRUE(VX_GLSaveRenderTarget(path("target.png").c_str(), &target, 1));
    EXPECT_EQ(stateOf(GL_PACK_ROW_LENGTH, GL_PIXEL_PACK_BUFFER_BINDING, GL_FRAMEBUFFER_BINDING_EXT),
              ints(100, buffer, 0));
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    EXPECT_EQ(Picture(path("target.png")).pixels, std::vector<std::uint32_t>(6, 0xFF003366));
    EXPECT_FALSE(VX_GLSaveRenderTarget(path("none.png").c_str(), &target, 2));
}

TEST_F(PictureTest, AHostRecordsFramesOfAnExactTime) {
    auto pipeline = NSInit(new ScriptedPipeline);
    std::vector<double> times;
    VX_GLHostOptions options;
    options.headless = options.stepped = true;
    options.width = 64;
    options.height = 48;
    constexpr std::uint32_t withoutBackBuffer[] = {NSOpenGLPFAColorSize, 24, 0};
    options.pixelFormat = withoutBackBuffer;
    auto host = VX_GLHost::open(pipeline.get(), options);
    ASSERT_NE(host, nullptr);
    pipeline->onRender = [&] {
        EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
        times.push_back(host->view()->GetFrameTime());
        drawMark();
    };
    EXPECT_TRUE(host->record(folder.c_str(), 98, 102, 25.0));
    EXPECT_EQ(times, (std::vector<double>{98 / 25.0, 99 / 25.0, 4.0, 101 / 25.0, 102 / 25.0}));
    expectMark(Picture(path("frame_00102.png")));
    pipeline->takeCalls();
    host->window()->close();
    EXPECT_EQ(host->run(), 0) << "there is no window to run for";
    host.reset();
    EXPECT_EQ(pipeline->takeCalls(), "notify stop detach detach");
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <VX_Platform/OpenGL/CGL.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/LogCollector.h>
#include <tests/support/Pixels.h>
#include <tests/support/SteppedClock.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>
#include <malloc.h>

#include <thread>

using namespace vx::test;

namespace {

NSRef<NSOpenGLContext> sharing(const HeadlessContext& other) {
    return NSRef<NSOpenGLContext>::adopt(
        (new NSOpenGLContext)->initWithFormat(other.view()->pixelFormat(), other.context()));
}

} // namespace

TEST(NSOpenGLContext, DrawsToItsViewsSurfaceFollowsItsSizeAndLeavesNoErrorWithoutOne) {
    HeadlessContext gl(32, 16);
    gl.view()->setFrame(CGRectMake(0, 0, 100, 50));
    ASSERT_TRUE(gl.context()->makeCurrentContext());
    clearTo(1, 0, 0);
    EXPECT_EQ(pixelAt(99, 49), 0xFF0000FFu);
    const auto child = sharing(gl);
    ASSERT_TRUE(child->makeCurrentContext());
    clearTo(1, 0, 0);
    EXPECT_EQ(child->drawableSize().width, 0.0);
    child->setView(gl.view());
    GLint viewport[4] = {};
    glGetIntegerv(GL_VIEWPORT, viewport);
    EXPECT_TRUE(viewport[2] == 100 && viewport[3] == 50) << "that of its first surface";
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    child->setView(nullptr);
}

// Else a frame that takes longer than a refresh is shown seconds late, and one of them waits for all.
TEST(NSOpenGLContext, LetsNoMoreThanAFramePileUpInTheDriver) {
    HeadlessContext gl(1024, 1024);
    const auto drawSlowly = [] {
        glEnable(GL_BLEND);
        for (int i = 0; i < 20; ++i)
            glRectf(-1, -1, 1, 1);
    };
    const auto timeOf = [](const std::function<void()>& work) {
        const auto begin = std::chrono::steady_clock::now();
        work();
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    };
    glFinish();
    const double all = timeOf([&] {
        for (int frame = 0; frame < 12; ++frame) {
            drawSlowly();
            gl.context()->flushBuffer();
        }
    });
    const double left = timeOf(glFinish);
    EXPECT_LT(left, 0.4 * (all + left));

    const auto flush = [&](int frames) {
        while (frames-- > 0)
            gl.context()->flushBuffer();
    };
    flush(100);
    const auto before = static_cast<double>(mallinfo2().uordblks);
    flush(3000);
    EXPECT_LT(static_cast<double>(mallinfo2().uordblks) - before, 65536.0) << "for days";
}

TEST(NSOpenGLContext, SharesObjectsAndRecordOfTheDriverAndLivesAsLongAsItIsCurrent) {
    HeadlessContext gl(8, 8);
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    NSRef<NSOpenGLContext> child = sharing(gl);
    ASSERT_TRUE(child->makeCurrentContext());
    EXPECT_TRUE(glIsTexture(texture));
    EXPECT_EQ(&child->capabilities(), &gl.context()->capabilities());
    EXPECT_EQ(&vx::currentGLCapabilities(), &child->capabilities());
    gl.context()->flushBuffer();
    EXPECT_EQ(NSOpenGLContext::currentContext(), child.get());
    child = nullptr;
    EXPECT_NE(glGetString(GL_VERSION), nullptr);
    NSOpenGLContext::clearCurrentContext();
    EXPECT_FALSE(vx::currentGLCapabilities().geometryShader4);
    gl.context()->flushBuffer();
    EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
}

TEST(NSOpenGLContext, IsItsThreadsUntilThatGivesItUpOrEnds) {
    HeadlessContext gl(8, 8);
    std::thread([&] { EXPECT_EQ(CGLSetCurrentContext(gl.context()), kCGLBadContext); }).join();
    NSOpenGLContext::clearCurrentContext();
    std::thread([&] { EXPECT_TRUE(gl.context()->makeCurrentContext()); }).join();
    EXPECT_TRUE(gl.context()->tryMakeCurrentContext());
    EXPECT_EQ(NSOpenGLContext::currentContext(), gl.context());
}

namespace {

class Leaving : public NSOpenGLView {
public:
    static inline std::string told;
    ~Leaving() override { told += "ended"; }
    void prepareOpenGL() override { removeFromSuperview(); }
    void drawRect(CGRect) override { told += "drawn "; }
};

} // namespace

TEST(NSOpenGLView, MayEndInItsSetUpHookAndTakesItsSurfaceFromAContextThatItGivesUp) {
    HeadlessContext gl(8, 8);
    auto window = NSInit(new NSWindow, CGRectMake(0, 0, 8, 8), 0);
    window->setContentView(NSInit(new Leaving, CGRectMake(0, 0, 8, 8), gl.view()->pixelFormat()).get());
    window->makeKeyAndOrderFront();
    NSApplication::sharedApplication()->runStep(0.0);
    EXPECT_EQ(Leaving::told, "drawn ended");

    const auto former = NSRef<NSOpenGLContext>::retain(gl.context());
    gl.view()->setOpenGLContext(sharing(gl).get());
    EXPECT_EQ(former->view(), nullptr);
}

TEST(NSOpenGLContext, TellsTheLogOfFaultsWhenAskedTo) {
    LogCollector log;
    SteppedClock clock;
    VX_SetDiagnostics(true);
    HeadlessContext gl(8, 8);
    VX_SetDiagnostics(false);
    for (int frame = 0; frame < 3; ++frame)
        glEnable(0xBAD);
    EXPECT_EQ(log.count("OpenGL error"), 1) << "one that repeats is folded";
    EXPECT_EQ(glGetError(), GLenum(GL_INVALID_ENUM)) << "the error is still there for who looks for it";
    clock.step(61 * vx::Clock::kSecond);
    glEnable(0xBAD);
    EXPECT_EQ(log.count("(3 times more)"), 1);
    HeadlessContext quiet(8, 8);
    clock.step(61 * vx::Clock::kSecond);
    glEnable(0xBAD);
    EXPECT_EQ(log.count("OpenGL error"), 2);
}

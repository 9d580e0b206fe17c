// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <tests/support/GLRecorder.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/LogCollector.h>
#include <tests/support/Pixels.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <algorithm>

using namespace vx::test;
using Lines = GLRecorder::Lines;
using Names = std::vector<unsigned>;

namespace {

constexpr GLenum kFrame = GL_FRAMEBUFFER_EXT;
constexpr GLenum kRender = GL_RENDERBUFFER_EXT;

Lines addSequence(GLenum target, unsigned frameBuffer, unsigned texture, int attachment, int width,
                  int height) {
    return {
        call("glBindFramebufferEXT", kFrame, frameBuffer),
        call("glGenTextures", 1, out),
        call("glEnable", target),
        call("glBindTexture", target, texture),
        call("glTexParameteri", target, GL_TEXTURE_MAG_FILTER, GL_LINEAR),
        call("glTexParameteri", target, GL_TEXTURE_MIN_FILTER, GL_LINEAR),
        call("glTexParameteri", target, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE),
        call("glTexParameteri", target, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE),
        call("glTexImage2D", target, 0, GL_RGBA8, width, height, 0, GL_RGBA, GL_UNSIGNED_BYTE, 0),
        call("glFramebufferTexture2DEXT", kFrame, GL_COLOR_ATTACHMENT0_EXT + attachment, target, texture, 0),
        call("glCheckFramebufferStatusEXT", kFrame),
        call("glBindFramebufferEXT", kFrame, 0),
        call("glDisable", target)};
}

Lines quad(float left, float right, float height, float s, float t) {
    return {call("glBegin", GL_QUADS),         call("glTexCoord2f", 0, 0),
            call("glVertex2f", left, 0),       call("glTexCoord2f", s, 0),
            call("glVertex2f", right, 0),      call("glTexCoord2f", s, t),
            call("glVertex2f", right, height), call("glTexCoord2f", 0, t),
            call("glVertex2f", left, height),  call("glEnd")};
}

Lines drawSequence(GLenum target, unsigned texture, const Lines& quads) {
    Lines lines{call("glEnable", target), call("glActiveTexture", GL_TEXTURE0),
                call("glBindTexture", target, texture)};
    lines.insert(lines.end(), quads.begin(), quads.end());
    lines.push_back(call("glDisable", target));
    return lines;
}

} // namespace

TEST(VX_GLRenderTarget, MakesItsFrameBufferWithAndWithoutDepth) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    VX_GLRenderTarget target;
    EXPECT_FALSE(target.SetResolution(-1, -1));
    EXPECT_TRUE(target.SetResolution(20, 10));
    EXPECT_EQ(recorder.take(), Lines());

    target.CreateFrameBuffer();
    const unsigned frame = target.m_FrameBuffer, depth = target.m_DepthBuffer;
    EXPECT_EQ(recorder.take(),
              (Lines{call("glGenFramebuffersEXT", 1, out), call("glBindFramebufferEXT", kFrame, frame),
                     call("glGenRenderbuffersEXT", 1, out), call("glBindRenderbufferEXT", kRender, depth),
                     call("glRenderbufferStorageEXT", kRender, GL_DEPTH_COMPONENT, 20, 10),
                     call("glFramebufferRenderbufferEXT", kFrame, GL_DEPTH_ATTACHMENT_EXT, kRender, depth),
                     call("glCheckFramebufferStatusEXT", kFrame), call("glBindFramebufferEXT", kFrame, 0)}));

    const unsigned texture = target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    EXPECT_FALSE(target.SetResolution(20, 10));
    EXPECT_EQ(target.m_Textures, Names{texture}) << "the same size keeps everything";
    recorder.take();
    target.m_UseDepth = false;
    EXPECT_EQ(target.CreateFrameBuffer(), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
    EXPECT_EQ(
        recorder.take(),
        (Lines{call("glDeleteTextures", 1, Names{texture}), call("glDeleteRenderbuffersEXT", 1, Names{depth}),
               call("glDeleteFramebuffersEXT", 1, Names{frame}), call("glGenFramebuffersEXT", 1, out),
               call("glBindFramebufferEXT", kFrame, target.m_FrameBuffer),
               call("glBindFramebufferEXT", kFrame, 0)}));
}

TEST(VX_GLRenderTarget, LeavesItsDepthTextureAlive) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    VX_GLRenderTarget target;
    target.SetResolution(20, 10);
    target.CreateFrameBufferDepthTexture2D();
    const unsigned depth = target.m_DepthBuffer;
    EXPECT_EQ(
        recorder.take(),
        (Lines{call("glGenFramebuffersEXT", 1, out),
               call("glBindFramebufferEXT", kFrame, target.m_FrameBuffer), call("glGenTextures", 1, out),
               call("glBindTexture", GL_TEXTURE_2D, depth),
               call("glTexParameterf", GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, 10496.0f),
               call("glTexParameterf", GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, 10496.0f),
               call("glTexParameteri", GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_NEAREST),
               call("glTexParameteri", GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_NEAREST),
               call("glTexParameteri", GL_TEXTURE_2D, GL_DEPTH_TEXTURE_MODE, GL_INTENSITY),
               call("glTexImage2D", GL_TEXTURE_2D, 0, GL_DEPTH_COMPONENT24, 20, 10, 0, GL_DEPTH_COMPONENT,
                    GL_UNSIGNED_BYTE, 0),
               call("glFramebufferTexture2DEXT", kFrame, GL_DEPTH_ATTACHMENT_EXT, GL_TEXTURE_2D, depth, 0),
               call("glCheckFramebufferStatusEXT", kFrame), call("glBindFramebufferEXT", kFrame, 0)}));
    target.FreeTextures();
    EXPECT_EQ(recorder.take().front(), call("glDeleteRenderbuffersEXT", 1, Names{depth}));
    EXPECT_TRUE(glIsTexture(depth));
    glDeleteTextures(1, &depth);
}

TEST(VX_GLRenderTarget, AddsTexturesAtTheNextAttachment) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    LogCollector log;
    VX_GLRenderTarget target;
    target.SetResolution(20, 10);
    EXPECT_EQ(target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1), 0u);
    EXPECT_TRUE(target.m_Textures.empty()) << "no framebuffer yet";
    target.m_UseDepth = false;
    target.CreateFrameBuffer();
    const unsigned frame = target.m_FrameBuffer;
    recorder.take();

    const unsigned first = target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    EXPECT_EQ(recorder.take(), addSequence(GL_TEXTURE_RECTANGLE_ARB, frame, first, 0, 20, 10));
    const unsigned second = target.AddTexture2DBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, 20, -1);
    EXPECT_EQ(recorder.take(), addSequence(GL_TEXTURE_2D, frame, second, 1, 20, 10));

    EXPECT_EQ(target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, 0, 10), 0u);
    EXPECT_EQ(target.AddTexture2DBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, 0, 10), 0u);
    EXPECT_EQ(log.lines,
              (Lines{"Can't allocate TextureBuffer: AddTextureBuffer", "Can't allocate AddTexture2DBuffer"}));
    EXPECT_EQ(target.m_Textures, (Names{first, second, 0, 0}));
    EXPECT_EQ(countOf(recorder.take(), "glDeleteTextures"), 2);

    // The deleted textures are not detached, so the driver may go on refusing; the place counts.
    target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    const Lines lines = recorder.take();
    const auto attach = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.starts_with("glFramebufferTexture2DEXT");
    });
    ASSERT_NE(attach, lines.end());
    EXPECT_NE(attach->find(text(GL_COLOR_ATTACHMENT0_EXT + 4)), std::string::npos) << *attach;
}

TEST(VX_GLRenderTarget, BindsProjectsAndDrawsInTheGivenOrder) {
    HeadlessContext gl(8, 8);
    GLRecorder recorder;
    VX_GLRenderTarget target;
    target.SetResolution(200, 100);
    target.CreateFrameBuffer();
    const unsigned rectangle = target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    const unsigned flat = target.AddTexture2DBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    recorder.take();

    target.Bind(1);
    unsigned buffers[] = {GL_COLOR_ATTACHMENT0_EXT, GL_COLOR_ATTACHMENT1_EXT};
    target.Binds(2, buffers);
    target.Unbind();
    target.SetDefaultProjection();
    EXPECT_EQ(recorder.take(),
              (Lines{call("glBindFramebufferEXT", kFrame, target.m_FrameBuffer),
                     call("glDrawBuffer", GL_COLOR_ATTACHMENT1_EXT), call("glViewport", 0, 0, 200, 100),
                     call("glBindFramebufferEXT", kFrame, target.m_FrameBuffer),
                     call("glDrawBuffers", 2, Names{buffers[0], buffers[1]}),
                     call("glViewport", 0, 0, 200, 100), call("glBindFramebufferEXT", kFrame, 0),
                     call("glDrawBuffer", GL_BACK), call("glMatrixMode", GL_MODELVIEW),
                     call("glLoadIdentity"), call("glMatrixMode", GL_PROJECTION), call("glLoadIdentity"),
                     call("glOrtho", 0, 200.0, 0, 100.0, -1, 1)}));

    target.DrawFullScreen(0);
    EXPECT_EQ(recorder.take(),
              drawSequence(GL_TEXTURE_RECTANGLE_ARB, rectangle, quad(0, 200, 100, 200, 100)));
    target.DrawFullScreen2D(1);
    EXPECT_EQ(recorder.take(), drawSequence(GL_TEXTURE_2D, flat, quad(0, 200, 100, 1, 1)));
    target.QuadsDEBUG();
    EXPECT_EQ(recorder.take(), quad(10, 190, 100, 200, 100));
    for (const int outside : {-1, 2}) {
        target.DrawFullScreen(outside);
        EXPECT_EQ(recorder.take()[2], call("glBindTexture", GL_TEXTURE_RECTANGLE_ARB, 0));
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLRenderTarget, BringsWhatWasDrawnToTheScreen) {
    HeadlessContext gl(32, 16);
    VX_GLRenderTarget target;
    target.SetResolution(32, 16);
    ASSERT_EQ(target.CreateFrameBuffer(), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
    ASSERT_NE(target.AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1), 0u);
    ASSERT_NE(target.AddTexture2DBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1), 0u);
    for (const int attachment : {0, 1}) { // the lower left quarter blue, the rest red or green
        target.Bind(attachment);
        clearTo(attachment == 0, attachment == 1, 0);
        clearTo(0, 0, 1, 0, 0, 16, 8);
    }
    target.Unbind();
    clearTo(0, 0, 0);
    target.SetDefaultProjection();
    for (const int attachment : {0, 1}) {
        attachment == 0 ? target.DrawFullScreen(0) : target.DrawFullScreen2D(1);
        const unsigned rest = attachment == 0 ? 0xFF0000FFu : 0x00FF00FFu;
        for (const auto& [x, y] : {std::pair(0, 0), {14, 6}, {18, 6}, {14, 10}, {31, 15}})
            EXPECT_EQ(pixelAt(x, y), x < 16 && y < 8 ? 0x0000FFFFu : rest) << x << ' ' << y;
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

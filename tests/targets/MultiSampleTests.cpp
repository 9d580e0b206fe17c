// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/targets/VX_GLMultiSampleRenderTarget.h>
#include <tests/support/GLTest.h>
#include <tests/targets/Attachments.h>

#include <cmath>
#include <memory>
#include <new>

using Target = VX_GLMultiSampleRenderTarget;

namespace {

constexpr int kSize = 64, kPixels = kSize * kSize;
constexpr GLenum kColor = GL_COLOR_ATTACHMENT0_EXT;

/// A box of 40 x 40 pixels in the middle, turned by 30 degrees, at depth 0.25.
void drawBox(float red, float green) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-32, 32, -32, 32, 0, 1);
    glRotatef(30, 0, 0, 1);
    glTranslatef(0, 0, -0.25f);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(red, green, 0);
    glEnable(GL_DEPTH_TEST);
    glRectf(-20, -20, 20, 20);
    glDisable(GL_DEPTH_TEST);
}

/// Whether the pixel lies wholly inside the box, as is told, or wholly outside.
bool isAwayFromEdges(int pixel, bool& inside) {
    const double right = pixel % kSize - 31.5, up = pixel / kSize - 31.5;
    const double c = std::cos(M_PI / 6), s = std::sin(M_PI / 6);
    const double depth = 20 - std::max(std::abs(right * c + up * s), std::abs(up * c - right * s));
    inside = depth > 0;
    return std::abs(depth) > 0.75;
}

std::vector<float> texels(unsigned texture, GLenum format, int level = 0) {
    std::vector<float> values(std::size_t(kPixels >> 2 * level));
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexImage(GL_TEXTURE_2D, level, format, GL_FLOAT, values.data());
    glBindTexture(GL_TEXTURE_2D, 0);
    return values;
}

/// Away from the edges as `drawBox` has it. Returns the number of values between, and adds all up.
int expectBox(const std::vector<float>& values, float inside, float outside, float* sum = nullptr) {
    int between = 0;
    for (int i = 0; i < kPixels; ++i) {
        const float value = values[std::size_t(i)];
        if (bool isInside; isAwayFromEdges(i, isInside)) {
            EXPECT_NEAR(value, isInside ? inside : outside, 1e-4f) << i;
        }
        between += value != inside && value != outside;
        if (sum)
            *sum += value;
    }
    return between;
}

void expectSmoothBox(unsigned texture, GLenum channel) {
    float sum = 0;
    EXPECT_GT(expectBox(texels(texture, channel), 1, 0, &sum), 80);
    EXPECT_NEAR(sum, 1600, 16) << "as many pixels as the box has";
}

std::vector<int> s_Granted; // samples of the next renderbuffers, as the driver would say
unsigned s_Status;

} // namespace

TEST(VX_GLMultiSampleRenderTarget, ResolvesTheEdgesOfARotatedBoxIntoItsTextures) {
    HeadlessContext gl(kSize, kSize);
    for (const bool mipmaps : {true, false}) {
        Target target;
        target.m_GenerateMipmap = mipmaps;
        target.AllocateResolveCount(2);
        target.SetResolution(kSize, kSize);
        target.CreateFrameBuffer();
        for (const int i : {0, 1}) {
            target.Bind(i);
            drawBox(i == 0, i == 1);
        }
        target.Unbind();
        target.CopyDepth();
        EXPECT_EQ(stateOf(GL_READ_FRAMEBUFFER_BINDING_EXT, GL_DRAW_FRAMEBUFFER_BINDING_EXT), ints(0, 0));
        expectBox(texels(target.m_ResolveDepthTexture, GL_DEPTH_COMPONENT), 0.25f, 1.0f);
        for (const int i : {0, 1}) {
            const unsigned texture = target.m_ResolveTextures[i];
            glBindTexture(GL_TEXTURE_2D, texture);
            target.Copy(i);
            EXPECT_EQ(stateOf(GL_READ_FRAMEBUFFER_BINDING_EXT, GL_DRAW_FRAMEBUFFER_BINDING_EXT,
                              GL_TEXTURE_BINDING_2D, GL_TEXTURE_2D),
                      ints(0, 0, mipmaps ? 0 : texture, 0));
            expectSmoothBox(texture, i ? GL_GREEN : GL_RED);
            if (mipmaps) {
                const auto level = texels(texture, i ? GL_GREEN : GL_RED, 3);
                EXPECT_EQ(ints(level[0], level[4 * 8 + 4]), ints(0, 1)) << "made of what was copied";
            }
            glBindTexture(GL_TEXTURE_2D, texture);
            EXPECT_EQ(boundTexture(GL_TEXTURE_2D),
                      ints(GL_CLAMP_TO_EDGE, GL_CLAMP_TO_EDGE, mipmaps ? GL_LINEAR_MIPMAP_LINEAR : GL_LINEAR,
                           GL_LINEAR, GL_LUMINANCE, kSize, kSize, GL_RGBA8));
            int width = -1;
            glGetTexLevelParameteriv(GL_TEXTURE_2D, 3, GL_TEXTURE_WIDTH, &width);
            EXPECT_EQ(width, mipmaps ? kSize / 8 : 0);
        }
        glColor3f(1, 1, 1);
        target.SetDefaultProjection();
        target.DrawFullScreenMSAA();
        EXPECT_EQ(ints(pixelAt(32, 32), pixelAt(1, 1)), ints(0xFF0000FF, 0));
        EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D, GL_TEXTURE_2D), ints(target.m_ResolveTextures[0], 0));
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLMultiSampleRenderTarget, MakesAndFreesWhatItsFieldsSay) {
    auto target = std::make_unique<Target>();
    HeadlessContext gl(8, 8);
    LogCollector log;
    target->CreateFrameBufferDepthTexture2D(); // the next depth attachment is none of a kind with it
    EXPECT_THROW(target->AllocateResolveCount(-1), std::bad_alloc);
    target->Copy(0);
    target->DrawFullScreenMSAA();
    const unsigned plain[] = {GL_RGBA8, GL_UNSIGNED_BYTE}, wide[] = {GL_RGBA16F_ARB, GL_FLOAT};
    for (const auto& [count, depth, format] : {std::tuple(3, true, plain), {1, false, wide}}) {
        target->FreeTextures();
        target->m_UseDepth = depth;
        for (const unsigned stale : {0u, 7u}) {
            std::fill_n(target->m_ResolveTextures, stale ? count : 0, stale);
            target->AllocateResolveCount(count);
            EXPECT_EQ(target->m_ResolveTextures[0], 0u) << "the allocator hands the same bytes out again";
        }
        target->SetTextureFormat(format[0], format[1]);
        target->SetResolution(kSize, kSize);
        ASSERT_EQ(target->CreateFrameBuffer(), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
        const unsigned frames[] = {target->m_FrameBuffer, target->m_ResolveFrameBuffer},
                       *buffers = target->m_ColorRenderBuffers, *textures = target->m_ResolveTextures;
        for (int i = 0; i < count; ++i) {
            EXPECT_EQ(attached(frames[0], kColor + unsigned(i)), ints(GL_RENDERBUFFER_EXT, buffers[i]));
            EXPECT_EQ(attached(frames[1], kColor + unsigned(i)), ints(GL_TEXTURE, textures[i]));
            int samples = 0, internalFormat = 0;
            glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, buffers[i]);
            glGetRenderbufferParameterivEXT(GL_RENDERBUFFER_EXT, GL_RENDERBUFFER_SAMPLES_EXT, &samples);
            glGetRenderbufferParameterivEXT(GL_RENDERBUFFER_EXT, GL_RENDERBUFFER_INTERNAL_FORMAT_EXT,
                                            &internalFormat);
            EXPECT_EQ(ints(samples, internalFormat), ints(4, format[0]));
        }
        EXPECT_EQ(attached(frames[0], GL_DEPTH_ATTACHMENT_EXT)[0], depth ? GL_RENDERBUFFER_EXT : GL_NONE);
        EXPECT_EQ(attached(frames[1], GL_DEPTH_ATTACHMENT_EXT)[0], depth ? GL_TEXTURE : GL_NONE);
        const unsigned depths[] = {target->m_DepthBuffer, target->m_ResolveDepthTexture};
        const unsigned buffer = buffers[0], texture = textures[0];
        target->SetResolution(kSize, kSize + count);
        EXPECT_EQ(ints(textures[0], buffers[0], target->m_DepthBuffer, target->m_ResolveDepthTexture,
                       target->m_FrameBuffer, target->m_ResolveFrameBuffer),
                  ints(0, 0, 0, 0, 0, 0));
        EXPECT_FALSE(glIsFramebufferEXT(frames[0]) || glIsFramebufferEXT(frames[1]) || glIsTexture(texture) ||
                     glIsRenderbufferEXT(buffer) || glIsRenderbufferEXT(depths[0]) || glIsTexture(depths[1]));
    }
    target->AllocateResolveCount(0);
    EXPECT_NE(target->CreateFrameBuffer(), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
    target->DrawFullScreenMSAA();
    EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D), ints(0));
    NSOpenGLContext::clearCurrentContext();
    { Target unused; }
    target.reset();
    EXPECT_EQ(log.count("VX_GLMultiSampleRenderTarget: OpenGL object") + log.count("is not deleted"), 2);
    gl.context()->makeCurrentContext();
}

TEST(VX_GLMultiSampleRenderTarget, TellsOfSamplesThatFallShortAndGoesOn) {
    HeadlessContext gl(8, 8);
    const std::string color = "Failed: GL_RENDERBUFFER_SAMPLES_EXT[ query < DepthSamples ]",
                      depth = "Failed: GL_RENDERBUFFER_SAMPLES_EXT",
                      status = "Failed: VX_GLMultiSampleRenderTarget::CreateFrameBuffer : ";
    const struct {
        std::vector<int> granted; // three colours, depth
        unsigned status;
        std::vector<std::string> lines;
    } rows[] = {
        {{4, 8, 4, 4}, GL_FRAMEBUFFER_COMPLETE_EXT, {}},
        {{4, 3, 4, 4}, GL_FRAMEBUFFER_COMPLETE_EXT, {color}},
        {{4, 4, 4, 2}, GL_FRAMEBUFFER_COMPLETE_EXT, {depth}},
        {{0, 0, 0, 0}, GL_FRAMEBUFFER_UNSUPPORTED_EXT, {color, color, color, depth, status + "8cdd"}}};
    LogCollector log;
    struct : Target {
        void FreeTextures() override {
            ++freed;
            Target::FreeTextures();
        }
        int freed = 0;
    } target;
    target.AllocateResolveCount(3);
    target.SetResolution(8, 8);
    target.m_DepthSamples = 64; // more than any driver has
    EXPECT_NE(target.CreateFrameBuffer(), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
    EXPECT_EQ(log.count(color) + log.count(status), 4);
    EXPECT_EQ(target.freed, 2);
    target.m_DepthSamples = 4;
    for (const auto& row : rows) {
        log.lines.clear();
        s_Granted = row.granted;
        s_Status = row.status;
        const auto query =
            std::exchange(epoxy_glGetRenderbufferParameterivEXT, [](GLenum, GLenum, int* value) {
                *value = s_Granted.front();
                s_Granted.erase(s_Granted.begin());
            });
        const auto check = std::exchange(epoxy_glCheckFramebufferStatusEXT, [](GLenum) { return s_Status; });
        EXPECT_EQ(target.CreateFrameBuffer(), row.status);
        epoxy_glGetRenderbufferParameterivEXT = query;
        epoxy_glCheckFramebufferStatusEXT = check;
        EXPECT_EQ(log.lines, row.lines);
        EXPECT_EQ(attached(target.m_FrameBuffer, kColor + 2)[0], GL_RENDERBUFFER_EXT);
    }
}

TEST(VX_GLMultiSampleRenderTarget, ServesAFilterThatAsksForNoTextures) {
    struct Filter : VX_GLFilter {
        Filter() : VX_GLFilter(nullptr) { m_RenderTarget = &target; }
        ~Filter() override { m_RenderTarget = nullptr; }
        int GetMinRTCount() override { return 0; }
        Target target;
    };
    HeadlessContext gl(kSize, kSize);
    VX_GLFilterManager manager;
    Filter filter;
    ASSERT_EQ(manager.SetupFilter(&filter, kSize, kSize, GL_RGBA8, GL_UNSIGNED_BYTE), &filter);
    filter.Bind(0);
    drawBox(1, 0);
    filter.Unbind();
    filter.target.Copy(0);
    expectSmoothBox(filter.target.m_ResolveTextures[0], GL_RED);
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <VX_OpenGL64/targets/VX_GLMultiSampleRenderTarget.h>
#include <VX_OpenGL64/targets/VX_GLPixelBufferObject.h>
#include <tests/support/GLTest.h>

#include <climits>
#include <cstdint>
#include <memory>
#include <new>
#include <numeric>

using PixelBuffer = VX_GLPixelBufferObject;
using Multisampled = VX_GLMultiSampleRenderTarget;

namespace {

constexpr int kSize = 64;
constexpr GLenum kComplete = GL_FRAMEBUFFER_COMPLETE_EXT;
using Words = std::vector<std::uint32_t>;

struct Filter : VX_GLFilter {
    explicit Filter(Multisampled* target) : VX_GLFilter(nullptr) { m_RenderTarget = target; }
    int GetMinRTCount() override { return 0; }
};

/// A box of 40 x 40 pixels in the middle, turned by 30 degrees, at depth 0.5.
void drawBox(float red, float green) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(-32, 32, -32, 32, -1, 1);
    glRotatef(30, 0, 0, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glColor3f(red, green, 0);
    glEnable(GL_DEPTH_TEST);
    glRectf(-20, -20, 20, 20);
    glDisable(GL_DEPTH_TEST);
}

/// Sum of the texels of one channel, how many are 1, and how many are neither 0 nor 1.
std::vector<int> channelOf(unsigned texture, GLenum channel, int level = 0) {
    std::vector<float> all(std::size_t(kSize * kSize >> 2 * level));
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexImage(GL_TEXTURE_2D, level, channel, GL_FLOAT, all.data());
    return ints(std::accumulate(all.begin(), all.end(), 0.0f), std::count(all.begin(), all.end(), 1.0f),
                std::count_if(all.begin(), all.end(), [](float each) { return each > 0 && each < 1; }));
}

/// How many framebuffers, renderbuffers and textures there are.
std::vector<int> objects() {
    int frames = 0, buffers = 0, textures = 0;
    for (unsigned name = 1; name < 100; ++name) {
        frames += glIsFramebufferEXT(name);
        buffers += glIsRenderbufferEXT(name);
        textures += glIsTexture(name);
    }
    return ints(frames, buffers, textures);
}

std::vector<int> bindings() {
    return stateOf(GL_PIXEL_PACK_BUFFER_BINDING, GL_PIXEL_UNPACK_BUFFER_BINDING, GL_TEXTURE_BINDING_2D,
                   GL_TEXTURE_2D, GL_READ_BUFFER);
}

Words copied(PixelBuffer& buffer, unsigned texture) {
    Words pixels(33 * 17);
    buffer.CopyToTexture2D(texture, GL_BGRA, GL_UNSIGNED_BYTE);
    EXPECT_EQ(bindings(), ints(stateOf(GL_PIXEL_PACK_BUFFER_BINDING)[0], 0, 0, 0, GL_FRONT));
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    glBindTexture(GL_TEXTURE_2D, texture);
    glGetTexImage(GL_TEXTURE_2D, 0, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
    return pixels;
}

} // namespace

TEST(VX_GLMultiSampleRenderTarget, ResolvesTheEdgesOfARotatedBoxIntoItsTextures) {
    HeadlessContext gl(kSize, kSize);
    VX_GLFilterManager manager;
    for (const bool mipmaps : {true, false}) {
        auto& target = *new Multisampled;
        Filter filter(&target);
        target.m_GenerateMipmap = mipmaps;
        target.SetTextureFormat(mipmaps ? GL_RGBA8 : GL_RGBA16F_ARB, GL_FLOAT);
        target.AllocateResolveCount(2);
        manager.SetupFilter(&filter, kSize, kSize, GL_RGBA8, GL_UNSIGNED_BYTE);
        for (const int i : {0, 1}) {
            filter.Bind(i);
            drawBox(i == 0, i == 1);
        }
        filter.Unbind();
        target.CopyDepth();
        EXPECT_EQ(stateOf(GL_READ_FRAMEBUFFER_BINDING_EXT, GL_DRAW_FRAMEBUFFER_BINDING_EXT), ints(0, 0));
        EXPECT_NEAR(channelOf(target.m_ResolveDepthTexture, GL_DEPTH_COMPONENT)[0], 4096 - 1600 / 2, 16);
        for (const int i : {0, 1}) {
            const unsigned texture = target.m_ResolveTextures[i], channel = i ? GL_GREEN : GL_RED;
            glBindTexture(GL_TEXTURE_2D, texture);
            target.Copy(i);
            EXPECT_EQ(stateOf(GL_READ_FRAMEBUFFER_BINDING_EXT, GL_DRAW_FRAMEBUFFER_BINDING_EXT,
                              GL_TEXTURE_BINDING_2D, GL_TEXTURE_2D),
                      ints(0, 0, mipmaps ? 0 : texture, 0));
            const auto box = channelOf(texture, channel);
            EXPECT_NEAR(box[0], 1600, 16);
            EXPECT_TRUE(box[1] > 1480 && box[2] > 80) << box[1] << ' ' << box[2];
            int filtering = 0, format = 0, width = 0;
            glGetTexParameteriv(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, &filtering);
            glGetTexLevelParameteriv(GL_TEXTURE_2D, 0, GL_TEXTURE_INTERNAL_FORMAT, &format);
            glGetTexLevelParameteriv(GL_TEXTURE_2D, 2, GL_TEXTURE_WIDTH, &width);
            EXPECT_EQ(ints(filtering, format, width), mipmaps ? ints(GL_LINEAR_MIPMAP_LINEAR, GL_RGBA8, 16)
                                                              : ints(GL_LINEAR, GL_RGBA16F_ARB, 0));
            EXPECT_NEAR(channelOf(texture, channel, 2)[0], mipmaps ? 1600 / 16 : 0, 2);
        }
        glColor3f(1, 1, 1);
        target.SetDefaultProjection();
        target.DrawFullScreenMSAA();
        EXPECT_EQ(ints(pixelAt(32, 32), pixelAt(1, 1)), ints(0xFF0000FF, 0));
        EXPECT_EQ(stateOf(GL_TEXTURE_BINDING_2D, GL_TEXTURE_2D), ints(target.m_ResolveTextures[0], 0));
    }
}

TEST(VX_GLMultiSampleRenderTarget, MakesAndFreesWhatItsFieldsSay) {
    auto target = std::make_unique<Multisampled>();
    HeadlessContext gl(kSize, kSize);
    LogCollector log;
    EXPECT_THROW(target->AllocateResolveCount(-1), std::bad_alloc);
    target->Copy(0);
    target->DrawFullScreenMSAA();
    for (const auto& [count, depth] : {std::pair(3, true), {1, false}}) {
        target->AllocateResolveCount(count);
        std::fill_n(target->m_ResolveTextures, count, 7u);
        target->AllocateResolveCount(count);
        EXPECT_EQ(target->m_ResolveTextures[0], 0u) << "though the allocator gives the same bytes again";
        target->m_UseDepth = depth;
        target->SetResolution(kSize, kSize);
        target->CreateFrameBufferDepthTexture2D(); // the next depth attachment is of another kind
        const int left = objects()[2];             // its texture lives on
        for (int round = 0; round < 2; ++round)
            EXPECT_EQ(target->CreateFrameBuffer(), kComplete);
        EXPECT_EQ(objects(), ints(2, count + depth, left + count + depth));
        EXPECT_EQ(stateOf(GL_FRAMEBUFFER_BINDING_EXT), ints(0));
        target->SetResolution(kSize, kSize + count);
        EXPECT_EQ(objects(), ints(0, 0, left));
        EXPECT_EQ(target->m_ResolveTextures[0] + target->m_ColorRenderBuffers[0], 0u);
    }
    target->AllocateResolveCount(0);
    EXPECT_NE(target->CreateFrameBuffer(), kComplete);
    target->DrawFullScreenMSAA();
    NSOpenGLContext::clearCurrentContext();
    { Multisampled unused; }
    target.reset();
    EXPECT_EQ(log.count("VX_GLMultiSampleRenderTarget: OpenGL object") + log.count("is not deleted"), 2);
    gl.context()->makeCurrentContext();
}

TEST(VX_GLMultiSampleRenderTarget, TellsOfSamplesThatFallShortAndGoesOn) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    Multisampled target;
    target.AllocateResolveCount(3);
    target.SetResolution(8, 8);
    target.m_DepthSamples = 64; // more than any driver has
    EXPECT_NE(target.CreateFrameBuffer(), kComplete);
    EXPECT_EQ(log.lines.size(), 5u);
    target.m_DepthSamples = 4;
    log.lines.clear();
    static std::vector<int> granted = {4, 8, 4, 4, 4, 3, 4, 4, 4, 4, 4, 2, 0, 0, 0, 0}; // 3 colours, depth
    static unsigned status = 0;
    const auto query = std::exchange(epoxy_glGetRenderbufferParameterivEXT, [](GLenum, GLenum, int* value) {
        *value = granted.front();
        granted.erase(granted.begin());
    });
    const auto check = std::exchange(epoxy_glCheckFramebufferStatusEXT, [](GLenum) { return status; });
    for (const unsigned each : {kComplete, kComplete, kComplete, GLenum(GL_FRAMEBUFFER_UNSUPPORTED_EXT)}) {
        status = each;
        EXPECT_EQ(target.CreateFrameBuffer(), each);
    }
    epoxy_glGetRenderbufferParameterivEXT = query;
    epoxy_glCheckFramebufferStatusEXT = check;
    const std::string depth = "Failed: GL_RENDERBUFFER_SAMPLES_EXT",
                      color = depth + "[ query < DepthSamples ]",
                      incomplete = "Failed: VX_GLMultiSampleRenderTarget::CreateFrameBuffer : 8cdd";
    EXPECT_EQ(log.lines, (std::vector{color, depth, color, color, color, depth, incomplete}));
}

TEST(VX_GLPixelBufferObject, BringsTheFrontBufferToMemoryAndIntoATexturePixelForPixel) {
    HeadlessContext gl(33, 17);
    Words drawn(33 * 17, 5);
    for (std::size_t i = 1; i < drawn.size(); ++i)
        drawn[i] = drawn[i - 1] * 1664525 + 1013904223;
    const Words written(drawn.rbegin(), drawn.rend());
    glWindowPos2i(0, 0);
    glDrawPixels(33, 17, GL_BGRA, GL_UNSIGNED_BYTE, drawn.data());
    unsigned texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, 33, 17, 0, GL_BGRA, GL_UNSIGNED_BYTE, nullptr);
    glReadBuffer(GL_BACK);

    auto buffer = std::make_unique<PixelBuffer>(33, 17, 4, GL_STREAM_READ);
    const unsigned name = buffer->m_Buffer;
    EXPECT_EQ(bindings(), ints(0, 0, texture, 0, GL_BACK));
    buffer->ReadFrontBuffer();
    EXPECT_EQ(bindings(), ints(name, 0, texture, 0, GL_FRONT));
    EXPECT_EQ(copied(*buffer, texture), drawn) << "though it is bound still";
    const auto* pixels = static_cast<std::uint32_t*>(buffer->ReadOnlyBeginLock());
    EXPECT_EQ(Words(pixels, pixels + drawn.size()), drawn);
    EXPECT_EQ(bindings()[0], int(name));
    buffer->EndLock();
    EXPECT_EQ(bindings()[0], 0);
    static_cast<std::uint32_t*>(buffer->ReadWriteBeginLock())[0] = drawn[0];
    buffer->EndLock();
    std::copy(written.begin(), written.end(), static_cast<std::uint32_t*>(buffer->WriteOnlyBeginLock()));
    buffer->EndLock();
    EXPECT_EQ(copied(*buffer, texture), written);
    buffer->ReadFrontBuffer();
    buffer->EndLock();
    EXPECT_EQ(bindings()[0], 0) << "without a lock too";
    buffer.reset();
    EXPECT_FALSE(glIsBuffer(name));

    // Sizes are 64 bits wide and may be nothing.
    PixelBuffer empty(0, 5, 4, GL_STREAM_DRAW);
    empty.ReadFrontBuffer();
    EXPECT_EQ(empty.WriteOnlyBeginLock(), nullptr);
    empty.CopyToTexture2D(0, GL_BGRA, GL_UNSIGNED_BYTE);
    static std::vector<std::int64_t> sizes;
    const auto former = std::exchange(
        epoxy_glBufferData, [](GLenum, GLsizeiptr size, const void*, GLenum) { sizes.push_back(size); });
    const int rows[][3] = {{0, 5, 4}, {70000, 70000, 4}, {-2, 3, 4}, {INT_MAX, INT_MAX, INT_MAX}};
    for (const auto& [width, height, bytes] : rows)
        PixelBuffer(width, height, bytes, GL_STREAM_DRAW);
    epoxy_glBufferData = former;
    EXPECT_EQ(sizes, (std::vector<std::int64_t>{0, 19'600'000'000, -24, INT64_MAX}));
}

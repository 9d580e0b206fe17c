// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/camera/VX_GLCamera.h>
#include <VX_OpenGL64/meshes/VX_GLMeshDataRenderer.h>
#include <VX_OpenGL64/meshes/VX_GLVertex.h>
#include <VX_OpenGL64/shaders/VX_FragmentShader.h>
#include <VX_OpenGL64/shaders/VX_Program.h>
#include <VX_OpenGL64/shaders/VX_VertexShader.h>
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/GLTest.h>

using Target = VX_GLRenderTarget;

namespace {

constexpr GLenum kColor = GL_COLOR_ATTACHMENT0_EXT;
constexpr GLenum kRectangle = GL_TEXTURE_RECTANGLE_ARB;

/// The two kinds of colour texture and all that tells them apart.
const struct Kind {
    GLenum target, binding;
    unsigned (Target::*add)(unsigned, unsigned, int, int);
    void (Target::*draw)(int);
    const char* failure;
} kKinds[] = {{kRectangle, GL_TEXTURE_BINDING_RECTANGLE_ARB, &Target::AddTextureBuffer,
               &Target::DrawFullScreen, "Can't allocate TextureBuffer: AddTextureBuffer"},
              {GL_TEXTURE_2D, GL_TEXTURE_BINDING_2D, &Target::AddTexture2DBuffer, &Target::DrawFullScreen2D,
               "Can't allocate AddTexture2DBuffer"}};

/// Type and name of what is attached.
std::vector<int> attached(const Target& target, GLenum attachment) {
    EXPECT_EQ(stateOf(GL_FRAMEBUFFER_BINDING_EXT), ints(0));
    std::vector<int> found(2);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, target.m_FrameBuffer);
    for (const int i : {0, 1})
        glGetFramebufferAttachmentParameterivEXT(
            GL_FRAMEBUFFER_EXT, attachment, GL_FRAMEBUFFER_ATTACHMENT_OBJECT_TYPE_EXT + GLenum(i), &found[i]);
    glBindFramebufferEXT(GL_FRAMEBUFFER_EXT, 0);
    return found;
}

/// Wrapping, filters, mode of depth, size and format of the texture that is bound.
std::vector<int> boundTexture(GLenum target) {
    std::vector<int> values;
    for (const GLenum name : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T, GL_TEXTURE_MIN_FILTER,
                              GL_TEXTURE_MAG_FILTER, GL_DEPTH_TEXTURE_MODE})
        glGetTexParameteriv(target, name, &values.emplace_back());
    for (const GLenum name : {GL_TEXTURE_WIDTH, GL_TEXTURE_HEIGHT, GL_TEXTURE_INTERNAL_FORMAT})
        glGetTexLevelParameteriv(target, 0, name, &values.emplace_back());
    return values;
}

struct CountingTarget : Target {
    void FreeTextures() override {
        ++freed;
        Target::FreeTextures();
    }
    int freed = 0;
};

template <class Buffer>
void checkOperations(GLenum target, GLenum binding, GLenum otherBinding) {
    auto* buffer = new Buffer;
    const unsigned name = buffer->m_Buffer;
    const auto parameter = [&](GLenum which) {
        int value = 0;
        glGetBufferParameteriv(target, which, &value);
        return value;
    };
    buffer->BindBuffer();
    EXPECT_EQ(stateOf(binding, otherBinding), ints(name, 0));
    float data[4] = {1, 2, 3, 4};
    buffer->Allocate(16, GL_DYNAMIC_DRAW, data);
    EXPECT_EQ(ints(buffer->m_Size, parameter(GL_BUFFER_USAGE)), ints(16, GL_DYNAMIC_DRAW));
    buffer->Copy(4, 8, data);
    const auto* mapped = static_cast<const float*>(buffer->Lock(GL_READ_ONLY));
    EXPECT_EQ(std::vector(mapped, mapped + 4), (std::vector<float>{1, 1, 2, 4}));
    EXPECT_EQ(parameter(GL_BUFFER_ACCESS), GL_READ_ONLY);
    EXPECT_TRUE(buffer->Unlock());
    EXPECT_FALSE(buffer->Unlock()) << "it is not mapped any more";
    buffer->UnBindBuffer();
    EXPECT_EQ(stateOf(binding), ints(0));
    delete buffer;
    EXPECT_FALSE(glIsBuffer(name));
}

} // namespace

TEST(VX_GLRenderTarget, DropsEverythingWhenEitherSideChangesAndNothingElse) {
    HeadlessContext gl(8, 8);
    auto* target = new CountingTarget;
    EXPECT_FALSE(target->SetResolution(-1, -1));
    target->SetResolution(20, 10);
    for (const auto& [width, height] : {std::pair(20, 11), {21, 11}}) {
        target->CreateFrameBuffer();
        const unsigned frame = target->m_FrameBuffer, depth = target->m_DepthBuffer;
        const unsigned texture = target->AddTextureBuffer(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
        target->freed = 0;
        EXPECT_FALSE(target->SetResolution(target->m_Width, target->m_Height));
        EXPECT_EQ(target->m_Textures, std::vector<unsigned>{texture});
        EXPECT_TRUE(target->SetResolution(width, height));
        EXPECT_EQ(ints(target->m_Width, target->m_Height, target->freed, target->m_Textures.size(),
                       target->m_FrameBuffer, target->m_DepthBuffer),
                  ints(width, height, 1, 0, 0, 0));
        EXPECT_FALSE(glIsTexture(texture) || glIsFramebufferEXT(frame) || glIsRenderbufferEXT(depth));
    }
    target->CreateFrameBuffer();
    target->CreateFrameBufferDepthTexture2D();
    EXPECT_EQ(target->freed, 3) << "by the virtual operation each time";
    const unsigned frame = target->m_FrameBuffer;
    delete target;
    EXPECT_FALSE(glIsFramebufferEXT(frame));
}

TEST(VX_GLRenderTarget, MakesItsDepthAttachmentOrNone) {
    HeadlessContext gl(8, 8);
    Target target;
    target.SetResolution(20, 10);
    target.CreateFrameBuffer();
    EXPECT_EQ(attached(target, GL_DEPTH_ATTACHMENT_EXT), ints(GL_RENDERBUFFER_EXT, target.m_DepthBuffer));
    int width = 0;
    glGetRenderbufferParameterivEXT(GL_RENDERBUFFER_EXT, GL_RENDERBUFFER_WIDTH_EXT, &width);
    EXPECT_EQ(width, 20) << "it stays bound";

    target.CreateFrameBufferDepthTexture2D();
    const unsigned depth = target.m_DepthBuffer;
    EXPECT_EQ(attached(target, GL_DEPTH_ATTACHMENT_EXT), ints(GL_TEXTURE, depth));
    EXPECT_EQ(boundTexture(GL_TEXTURE_2D),
              ints(GL_CLAMP, GL_CLAMP, GL_NEAREST, GL_NEAREST, GL_INTENSITY, 20, 10, GL_DEPTH_COMPONENT24));
    glBindRenderbufferEXT(GL_RENDERBUFFER_EXT, depth); // another target's, of the same name
    target.FreeTextures();
    EXPECT_TRUE(target.m_DepthBuffer == 0 && glIsTexture(depth)) << "taken for a renderbuffer, it lives on";
    EXPECT_TRUE(glIsRenderbufferEXT(depth));

    target.SetResolution(0, 0); // not complete
    for (const auto create : {&Target::CreateFrameBuffer, &Target::CreateFrameBufferDepthTexture2D}) {
        target.m_UseDepth = true;
        EXPECT_NE((target.*create)(), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT));
        target.m_UseDepth = false;
        EXPECT_EQ((target.*create)(), unsigned(GL_FRAMEBUFFER_COMPLETE_EXT)) << "without asking";
        EXPECT_EQ(attached(target, GL_DEPTH_ATTACHMENT_EXT)[0], GL_NONE);
    }
}

TEST(VX_GLRenderTarget, AddsTexturesAtTheNextAttachment) {
    HeadlessContext gl(8, 8);
    LogCollector log;
    const int sizes[][4] = {{-1, -1, 20, 10}, {12, -1, 12, 10}, {-1, 5, 20, 5}}; // asked for, given
    for (const Kind& kind : kKinds) {
        Target target;
        const auto add = [&](int width, int height) {
            return (target.*kind.add)(GL_RGBA16F_ARB, GL_FLOAT, width, height);
        };
        target.m_UseDepth = false;
        target.SetResolution(20, 10);
        EXPECT_EQ(add(-1, -1) + target.m_Textures.size(), 0u) << "no framebuffer yet";
        for (const auto& [width, height, givenWidth, givenHeight] : sizes) {
            target.CreateFrameBuffer();
            const unsigned name = add(width, height);
            EXPECT_EQ(stateOf(kind.binding, kind.target), ints(name, 0)) << "bound, but not enabled";
            EXPECT_EQ(boundTexture(kind.target),
                      ints(GL_CLAMP_TO_EDGE, GL_CLAMP_TO_EDGE, GL_LINEAR, GL_LINEAR, GL_LUMINANCE, givenWidth,
                           givenHeight, GL_RGBA16F_ARB));
        }
        target.CreateFrameBuffer();
        const unsigned first = add(-1, -1), second = add(-1, -1);
        EXPECT_EQ(attached(target, kColor + 1), ints(GL_TEXTURE, second));
        EXPECT_EQ(add(0, 10), 0u);
        EXPECT_EQ(log.lines.back(), kind.failure);
        EXPECT_EQ(stateOf(kind.binding), ints(0)) << "the refused texture is deleted";
        EXPECT_EQ(target.m_Textures, (std::vector<unsigned>{first, second, 0}));
        add(-1, -1); // may be refused too, as the driver likes, but its place counts
        EXPECT_EQ(attached(target, kColor + 3)[0], GL_TEXTURE);
    }
}

TEST(VX_GLRenderTarget, DirectsDrawing) {
    HeadlessContext gl(8, 8);
    Target target;
    target.SetResolution(200, 100);
    target.CreateFrameBuffer();
    for (const Kind& kind : kKinds)
        (target.*kind.add)(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
    const auto directed = [] {
        int viewport[4] = {};
        glGetIntegerv(GL_VIEWPORT, viewport);
        EXPECT_EQ(ints(viewport[0], viewport[1], viewport[2], viewport[3]), ints(0, 0, 200, 100));
        return stateOf(GL_FRAMEBUFFER_BINDING_EXT, GL_DRAW_BUFFER0, GL_DRAW_BUFFER1);
    };
    target.Bind(1);
    EXPECT_EQ(directed(), ints(target.m_FrameBuffer, kColor + 1, GL_NONE));
    for (int round = 0; round < 2; ++round) {
        glDrawBuffer(GL_NONE);
        target.Unbind();
    }
    EXPECT_EQ(directed(), ints(0, GL_BACK, GL_NONE));
    glViewport(1, 2, 3, 4);
    unsigned buffers[] = {kColor + 1, kColor};
    target.Binds(2, buffers);
    EXPECT_EQ(directed(), ints(target.m_FrameBuffer, kColor + 1, kColor));
}

TEST(VX_GLRenderTarget, LaysPixelsOverUnitsAndBringsWhatWasDrawnToTheScreen) {
    HeadlessContext gl(32, 16);
    Target target;
    target.SetResolution(32, 16);
    target.CreateFrameBuffer();
    for (const GLenum mode : {GL_PROJECTION, GL_MODELVIEW}) {
        glMatrixMode(mode);
        glScalef(3, 3, 3);
        glTranslatef(0.5f, 0.5f, 0);
    }
    target.SetDefaultProjection();
    EXPECT_EQ(stateOf(GL_MATRIX_MODE), ints(GL_PROJECTION));
    for (const int i : {0, 1}) {
        const auto& [kind, binding, add, draw, failure] = kKinds[i];
        const unsigned texture = (target.*add)(GL_RGBA8, GL_UNSIGNED_BYTE, -1, -1);
        const unsigned rest = i ? 0x00FF00FFu : 0xFF0000FFu;
        target.Bind(i);
        clearTo(i == 0, i == 1, 0);
        clearTo(0, 0, 1, 0, 0, 16, 8); // the lower left quarter blue, the rest red or green
        target.Unbind();
        (target.*draw)(i);
        for (const auto& [x, y] : {std::pair(0, 0), {14, 6}, {18, 6}, {14, 10}, {31, 15}})
            EXPECT_EQ(pixelAt(x, y), x < 16 && y < 8 ? 0x0000FFFFu : rest) << x << ' ' << y;
        EXPECT_EQ(stateOf(binding, kind), ints(texture, 0)) << "bound, but not enabled";
        for (const int outside : {-1, 2}) {
            glActiveTexture(GL_TEXTURE1);
            (target.*draw)(outside);
            EXPECT_EQ(stateOf(GL_ACTIVE_TEXTURE, binding), ints(GL_TEXTURE0, 0));
        }
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST(VX_GLVBOTarget, VertexAndIndexDifferInNothingButTheTarget) {
    HeadlessContext gl(8, 8);
    checkOperations<VX_GLVBOVertex>(GL_ARRAY_BUFFER, GL_ARRAY_BUFFER_BINDING,
                                    GL_ELEMENT_ARRAY_BUFFER_BINDING);
    checkOperations<VX_GLVBOIndex>(GL_ELEMENT_ARRAY_BUFFER, GL_ELEMENT_ARRAY_BUFFER_BINDING,
                                   GL_ARRAY_BUFFER_BINDING);
}

TEST(NoContextDeathTest, OperationsEndWithTheirNamesAndDeletionsAreToldAndLeftOut) {
    LogCollector log;
    HeadlessContext gl(8, 8);
    Target target;
    VX_GLMeshDataRenderer renderer;
    renderer.makeVBOVertex(GL_STATIC_DRAW, 4, 1, &target);
    {
        VX_GLVBOIndex buffer;
        VX_FragmentShader shader;
        shader.loadAndCompile("void main() {}");
        target.SetResolution(4, 4);
        target.CreateFrameBuffer();
        NSOpenGLContext::clearCurrentContext();
        target.FreeTextures();
        ASSERT_NE(target.m_FrameBuffer, 0u);
    }
    EXPECT_EQ(log.count("VX_GLVBOIndex: OpenGL object 2 is not deleted"), 1);
    EXPECT_EQ(log.count("VX_FragmentShader: OpenGL object"), 1);
    EXPECT_EQ(log.count("VX_GLRenderTarget: OpenGL object"), 1);
    EXPECT_EQ(log.count("is not deleted"), 3) << "one line for each";
    NSLogSetSink(nullptr, nullptr);
    EXPECT_DEATH(VX_GLVBOVertex(), "VX_GLVBOBase::VX_GLVBOBase: no OpenGL context");
    EXPECT_DEATH(renderer.Draw(GL_POINTS, VX_GLVertexP, 0, 0), "VX_GLMeshDataRenderer::Draw: no");
    EXPECT_DEATH(target.Bind(0), "VX_GLRenderTarget::Bind: no");
    EXPECT_DEATH(VX_Program().set1f("x", 1), "VX_Program::set1f: no");
    EXPECT_DEATH(VX_VertexShader().loadAndCompile(""), "VX_VertexShader::loadAndCompile: no");
    EXPECT_DEATH(VX_GLCamera().SetCameraView(), "VX_GLCamera::SetCameraView: no");
    gl.context()->makeCurrentContext();
}

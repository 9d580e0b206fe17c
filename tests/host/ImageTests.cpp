// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/HeadlessContext.h>
#include <tests/support/ImagePixels.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>

using namespace vx::test;

namespace {

using TextureImageTest = HeadlessTest;

/// A view with an image context, and in its frames a cube map and two textures of two rows: 2D and rectangle,
/// the lower row green and half as strong. A frame finds out whether its state has been disturbed.
struct ImageStage : Stage {
    explicit ImageStage(CGSize size, bool hasImageContext = true) : Stage(Draws::byItself, size, false) {
        if (hasImageContext)
            view->SetNeedCIContext();
        attachPipeline();
        step();
        onRender([this] { checkState(); });
        waitFor([this] { return ready.load(); });
    }
    void checkState() {
        const auto state = [] {
            return stateOf(GL_TEXTURE_BINDING_2D, GL_TEXTURE_BINDING_RECTANGLE, GL_TEXTURE_BINDING_CUBE_MAP,
                           GL_PACK_ROW_LENGTH, GL_PIXEL_PACK_BUFFER_BINDING);
        };
        if (!ready)
            makeTextures();
        else
            disturbed +=
                state() != ints(0, names[2], 0, 7, 77) || (glGetError() != GL_INVALID_ENUM && byBinding);
        glEnable(0xFFFF); // an error of the host's own
        ready = true;
    }
    void makeTextures() {
        const unsigned char texels[] = {0, 128, 0, 128, 0, 128, 0, 128, 255, 0, 0, 255, 255, 0, 0, 255};
        glGenTextures(3, names);
        for (const int i : {1, 2}) {
            const GLenum target = i == 1 ? GL_TEXTURE_2D : GL_TEXTURE_RECTANGLE;
            glBindTexture(target, names[i]);
            glTexImage2D(target, 0, GL_RGBA, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels);
        }
        glBindTexture(GL_TEXTURE_CUBE_MAP, names[0]);
        glBindTexture(GL_TEXTURE_CUBE_MAP, 0);
        glBindTexture(GL_TEXTURE_2D, 0);
        glPixelStorei(GL_PACK_ROW_LENGTH, 7);
        glBindBuffer(GL_PIXEL_PACK_BUFFER, 77);
    }

    unsigned names[3] = {};
    std::atomic<bool> ready{false}, byBinding{true};
    std::atomic<int> disturbed{0};
};

} // namespace

TEST_F(TextureImageTest, IsFittedIntoTheImageOnBlackWhileTheViewRenders) {
    for (const bool isWide : {true, false}) {
        ImageStage stage(isWide ? CGSizeMake(64, 32) : CGSizeMake(32, 64));
        for (const int turn : {1, 2, 3, 4}) { // the last two as on older drivers
            const auto pool = NSInit(new NSAutoreleasePool);
            stage.view->RenderThreadLock();
            stage.view->makeCurrentContext();
            vx::currentGLCapabilities().bindTextures = stage.byBinding = turn < 3;
            stage.view->RenderThreadUnLock();
            const auto before = stage.view->GetDrawnFrames();
            NSImage* image = stage.view->CreateNSImageFromTexture(stage.names[2 - turn % 2], 100, 100);
            ASSERT_NE(image, nullptr);
            EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
            const PixelRows rows = pixelsOf(image);
            EXPECT_TRUE(rows.width == 100 && rows.height == 100);
            EXPECT_EQ(rows.at(0, 0), 0xffu);
            EXPECT_EQ(rows.inked(), isWide ? ints(0, 99, 25, 74) : ints(25, 74, 0, 99));
            EXPECT_EQ(rows.at(50, isWide ? 27 : 5), 0xff0000ffu) << "the texture's last row is the topmost";
            EXPECT_EQ(rows.at(50, isWide ? 72 : 95), 0x008000ffu);
            EXPECT_TRUE(waitFor([&] { return stage.view->GetDrawnFrames() > before + 1; }));
        }
        EXPECT_EQ(stage.disturbed, 0);
    }
}

TEST_F(TextureImageTest, IsNullWithoutATextureAndBlackWithoutAnImageContext) {
    const auto pool = NSInit(new NSAutoreleasePool);
    LogCollector log;
    {
        ImageStage stage({64, 32});
        for (const unsigned name : {0u, 999u, stage.names[0]})
            EXPECT_EQ(stage.view->CreateNSImageFromTexture(name, 10, 10), nullptr);
        EXPECT_EQ(log.count("CreateNSImageFromTexture"), 2) << "nothing is told of the name 0";
        EXPECT_TRUE(pixelsOf(stage.view->CreateNSImageFromTexture(stage.names[1], -1, 1e9f)).pixels.empty());

        std::atomic<unsigned> top{0};
        stage.onRender([&] {
            stage.checkState();
            NSOpenGLContext* own = NSOpenGLContext::currentContext();
            const unsigned pixel =
                pixelsOf(stage.view->CreateNSImageFromTexture(stage.names[2], 64, 32)).at(9, 1);
            top = NSOpenGLContext::currentContext() == own ? pixel : 1;
        });
        EXPECT_TRUE(waitFor([&] { return top != 0; }));
        stage.onRender({});
        HeadlessContext other(8, 8);
        stage.view->RenderThreadLock();
        other.context()->makeCurrentContext();
        EXPECT_NE(stage.view->CreateNSImageFromTexture(stage.names[1], 9, 9), nullptr);
        EXPECT_EQ(NSOpenGLContext::currentContext(), other.context());
        stage.view->RenderThreadUnLock();
        EXPECT_TRUE(top == 0xff0000ffu && stage.disturbed == 0) << "in a hook";
    }
    ImageStage plain({64, 32}, false);
    const PixelRows black = pixelsOf(plain.view->CreateNSImageFromTexture(plain.names[1], 4, 4));
    EXPECT_EQ(black.pixels, std::vector<unsigned>(16, 0xffu));
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSAutoreleasePool.h>
#include <VX_Platform/OpenGL/GLCapabilities.h>
#include <tests/support/ImagePixels.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>

using namespace vx::test;

namespace {

using TextureImageTest = HeadlessTest;

NSRef<NSAutoreleasePool> newPool() {
    return NSInit(new NSAutoreleasePool);
}

/// A view with an image context and three textures of two rows, the lower one green and half as strong.
struct ImageStage : Stage {
    explicit ImageStage(CGSize size, bool hasImageContext = true) : Stage(Draws::byItself, size, false) {
        if (hasImageContext)
            view->SetNeedCIContext();
        attachPipeline();
        step();
        onRender([this] { checkStateAndFrame(); });
        waitFor([this] { return ready.load(); });
    }
    void checkStateAndFrame() {
        if (!ready) {
            makeTextures();
            glBindTexture(GL_TEXTURE_2D, 0);
            glBindTexture(GL_TEXTURE_RECTANGLE_ARB, names[2]);
            glPixelStorei(GL_PACK_ROW_LENGTH, 7);
            glBindBuffer(GL_PIXEL_PACK_BUFFER, 77);
        } else if (const GLenum error = glGetError(); error != GL_INVALID_ENUM && !takesErrors)
            ++disturbed;
        disturbed += stateOf(GL_TEXTURE_BINDING_2D, GL_TEXTURE_BINDING_RECTANGLE_ARB, GL_PACK_ROW_LENGTH,
                             GL_PIXEL_PACK_BUFFER_BINDING) != ints(0, names[2], 7, 77);
        glEnable(0xFFFF); // an error of the host's own
        ready = true;
    }
    void makeTextures() {
        const unsigned char texels[] = {0, 128, 0, 128, 0, 128, 0, 128, 255, 0, 0, 255, 255, 0, 0, 255};
        glGenTextures(3, names);
        for (const int i : {0, 1}) {
            const GLenum target = i ? GL_TEXTURE_RECTANGLE_ARB : GL_TEXTURE_2D;
            glBindTexture(target, names[i + 1]);
            glTexImage2D(target, 0, GL_RGBA, 2, 2, 0, GL_RGBA, GL_UNSIGNED_BYTE, texels);
        }
        glBindTexture(GL_TEXTURE_CUBE_MAP, names[0]);
    }

    unsigned names[3] = {};
    std::atomic<bool> ready{false};
    std::atomic<int> disturbed{0};
    std::atomic<bool> takesErrors{false};
};

} // namespace

TEST_F(TextureImageTest, IsFittedIntoTheImageOnBlackWhileTheViewRenders) {
    for (const bool isWide : {true, false}) {
        ImageStage stage(isWide ? CGSizeMake(64, 32) : CGSizeMake(32, 64));
        for (const int kind : {1, 2, -1, -2}) { // 2D and rectangle; again where the driver cannot be asked
            const auto pool = newPool();
            if (kind < 0) {
                stage.takesErrors = true;
                stage.view->RenderThreadLock();
                stage.view->makeCurrentContext();
                vx::currentGLCapabilities().bindTextures = false;
                stage.view->RenderThreadUnLock();
            }
            const auto before = stage.view->GetDrawnFrames();
            NSImage* image = stage.view->CreateNSImageFromTexture(stage.names[std::abs(kind)], 100, 100);
            ASSERT_NE(image, nullptr);
            EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
            const ImagePixels pixels(image);
            ASSERT_TRUE(pixels.width == 100 && pixels.height == 100);
            const auto at = [&](int across, int down) {
                return isWide ? pixels.at(across, down) : pixels.at(down, across);
            };
            EXPECT_TRUE(at(50, 24) == 0xffu && at(50, 75) == 0xffu);
            EXPECT_TRUE(at(50, 26) != 0xffu && at(50, 73) != 0xffu);
            EXPECT_TRUE(at(0, 50) != 0xffu && at(99, 50) != 0xffu);
            EXPECT_EQ(pixels.at(50, isWide ? 27 : 5), 0xff0000ffu) << "the texture's last row is the topmost";
            EXPECT_EQ(pixels.at(50, isWide ? 72 : 95), 0x008000ffu);
            EXPECT_TRUE(waitFor([&] { return stage.view->GetDrawnFrames() > before + 1; }));
        }
        EXPECT_EQ(stage.disturbed, 0);
    }
}

TEST_F(TextureImageTest, IsNullWithoutATextureAndBlackWithoutAnImageContext) {
    const auto pool = newPool();
    LogCollector log;
    {
        ImageStage stage({64, 32});
        EXPECT_EQ(stage.view->CreateNSImageFromTexture(0, 10, 10), nullptr);
        EXPECT_EQ(log.count("CreateNSImage"), 0);
        EXPECT_EQ(stage.view->CreateNSImageFromTexture(999, 10, 10), nullptr);
        EXPECT_EQ(stage.view->CreateNSImageFromTexture(stage.names[0], 10, 10), nullptr) << "a cube map";
        EXPECT_EQ(log.count("CreateNSImageFromTexture"), 2);
        EXPECT_EQ(stage.disturbed, 0);
        EXPECT_TRUE(
            ImagePixels(stage.view->CreateNSImageFromTexture(stage.names[1], -1, 1e9f)).pixels.empty());

        std::atomic<unsigned> top{0};
        stage.onRender([&] {
            NSOpenGLContext* own = NSOpenGLContext::currentContext();
            const auto inner = newPool();
            const unsigned pixel =
                ImagePixels(stage.view->CreateNSImageFromTexture(stage.names[2], 64, 32)).at(9, 1);
            top = NSOpenGLContext::currentContext() == own ? pixel : 1;
        });
        EXPECT_TRUE(waitFor([&] { return top != 0; }));
        EXPECT_EQ(top, 0xff0000ffu) << "in a hook";
        stage.onRender({});
    }
    ImageStage plain({64, 32}, false);
    const ImagePixels black(plain.view->CreateNSImageFromTexture(plain.names[1], 4, 4));
    EXPECT_EQ(black.pixels, std::vector<unsigned>(16, 0xffu));
}

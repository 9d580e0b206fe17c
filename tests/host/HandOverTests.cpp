// SPDX-License-Identifier: MIT
#include <tests/support/ScriptedPipeline.h>

#include <epoxy/gl.h>

using namespace vx::test;
using HandOverTest = HeadlessTest;

namespace {

// A refresh as the display link has it.
void beat(Stage& stage) {
    _VX_GLMainViewCallbackContext record{stage.view->existingOpenGLContext(), stage.view.get(), 0.0, 0};
    Heartbeat(nullptr, nullptr, &stage.time, 0, nullptr, &record);
}

} // namespace

TEST_F(HandOverTest, HoldsTheContextAndItsLockForARefreshAndGivesBothBack) {
    Stage stage;
    NSOpenGLContext* context = stage.view->existingOpenGLContext();
    NSOpenGLContext::clearCurrentContext();
    std::atomic<bool> taken{false};
    bool takenInside = true, current = false;
    std::thread other;
    stage.pipeline->onRender = [&] {
        current = context->isCurrent();
        other = std::thread([&] {
            CGLLockContext(context);
            taken = true;
            CGLUnlockContext(context);
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        takenInside = taken;
    };
    beat(stage);
    other.join();
    EXPECT_TRUE(current);
    EXPECT_FALSE(takenInside);
    EXPECT_TRUE(taken);
    EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
}

TEST_F(HandOverTest, NeitherDrawsNorStartsWhileAnotherThreadHasTheContextAndNamesTheRemedyOnce) {
    Stage stage;
    LogCollector log;
    NSOpenGLContext::clearCurrentContext();
    stage.view->makeCurrentContext();
    std::thread([&] {
        for (int i = 0; i < 200; ++i)
            beat(stage);
        stage.view->startRender();
    }).join();
    EXPECT_EQ(stage.view->displayLink(), nullptr);
    EXPECT_EQ(stage.pipeline->takeCalls(), "");
    EXPECT_EQ(stage.view->GetLostRefreshes(), 200u);
    EXPECT_EQ(log.count("between RenderThreadLock and RenderThreadUnLock"), 1);
    EXPECT_EQ(log.count("stays current on another thread"), 1);
    NSOpenGLContext::clearCurrentContext();
    std::thread([&] { beat(stage); }).join();
    EXPECT_EQ(stage.pipeline->takeCalls(), "callBack render afterFlush");
}

TEST_F(HandOverTest, GivesTheContextBackWithTheLastUnlockSoThatTheNextHolderFindsItFree) {
    Stage stage;
    NSOpenGLContext* context = stage.view->existingOpenGLContext();
    stage.view->RenderThreadLock();
    stage.view->RenderThreadLock();
    stage.view->makeCurrentContext();
    stage.view->RenderThreadUnLock();
    EXPECT_EQ(NSOpenGLContext::currentContext(), context);
    stage.view->RenderThreadUnLock();
    EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
    std::atomic<int> refused{0};
    const auto work = [&] {
        for (int i = 0; i < 2000; ++i) {
            stage.view->RenderThreadLock();
            refused += !context->tryMakeCurrentContext();
            stage.view->RenderThreadUnLock();
        }
    };
    std::thread first(work), second(work);
    first.join();
    second.join();
    EXPECT_EQ(refused, 0);
}

TEST_F(HandOverTest, SurvivesThreadsThatStopStartResizeAndWorkAtRandom) {
    Stage stage(Stage::Draws::byItself);
    std::atomic<bool> done{false};
    std::atomic<int> refused{0}, seen{0};
    std::atomic<unsigned> shared{0};
    stage.onRender([&] {
        glClear(GL_COLOR_BUFFER_BIT);
        seen += glIsTexture(shared);
    });
    const auto work = [&](unsigned seed) {
        while (!done) {
            std::this_thread::sleep_for(std::chrono::milliseconds(rand_r(&seed) % 4));
            stage.view->RenderThreadLock();
            stage.view->makeCurrentContext();
            refused += !stage.view->existingOpenGLContext()->isCurrent();
            GLuint name = shared;
            glDeleteTextures(1, &name);
            glGenTextures(1, &name);
            glBindTexture(GL_TEXTURE_2D, name);
            shared = name;
            stage.view->RenderThreadUnLock();
        }
    };
    std::thread first(work, 1), second(work, 2);
    unsigned seed = 3;
    for (int round = 0; round < 40; ++round) {
        // The hold keeps the others off the context while it is this thread's, and the link's thread waiting.
        stage.view->RenderThreadLock();
        std::this_thread::sleep_for(std::chrono::milliseconds(rand_r(&seed) % 20));
        stage.view->stopRender();
        if (rand_r(&seed) % 2)
            stage.view->stopRender();
        stage.view->startRender();
        stage.view->RenderThreadUnLock();
        stage.view->SetSkipRenderThread(rand_r(&seed) % 2);
        stage.window->setFrame(CGRectMake(0, 0, 32 + round * 8, 32 + round * 4));
        stage.step();
        std::this_thread::sleep_for(std::chrono::milliseconds(rand_r(&seed) % 20));
    }
    stage.view->SetSkipRenderThread(false);
    EXPECT_TRUE(waitFor([&] { return seen > 0; })) << "frames find what the host made";
    done = true;
    first.join();
    second.join();
    EXPECT_EQ(refused, 0);
    EXPECT_EQ(stage.view->bounds().size.width, 344.0);
}

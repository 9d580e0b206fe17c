// SPDX-License-Identifier: MIT
#include <tests/support/ScriptedPipeline.h>

#include <epoxy/gl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using vx::test::LogCollector;
using vx::test::Stage;

namespace {

class HandOverTest : public testing::Test {
protected:
    HandOverTest() { NSApplication::useHeadlessPlatform(); }

    // The view's callback record, as the display link has it.
    static CVReturn beat(Stage& stage) {
        _VX_GLMainViewCallbackContext record{stage.view->existingOpenGLContext(), stage.view.get(), 0.0, 0};
        return Heartbeat(nullptr, nullptr, &stage.time, 0, nullptr, &record);
    }
};

} // namespace

TEST_F(HandOverTest, GivesTheContextBackAfterEachHeartbeat) {
    Stage stage;
    NSOpenGLContext::clearCurrentContext();
    bool current = false;
    stage.pipeline->onRender = [&] { current = stage.view->existingOpenGLContext()->isCurrent(); };
    EXPECT_EQ(beat(stage), 0);
    EXPECT_TRUE(current);
    EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
}

TEST_F(HandOverTest, RunsNoHookWhileAnotherThreadHasTheContextAndNamesTheRemedyOnce) {
    Stage stage;
    LogCollector log;
    NSOpenGLContext::clearCurrentContext();
    stage.view->makeCurrentContext();
    std::thread([&] {
        for (int i = 0; i < 200; ++i)
            beat(stage);
    }).join();
    EXPECT_EQ(stage.pipeline->takeCalls(), "");
    EXPECT_EQ(stage.view->GetLostRefreshes(), 200u);
    EXPECT_EQ(log.count("between RenderThreadLock and RenderThreadUnLock"), 1);
    NSOpenGLContext::clearCurrentContext();
    std::thread([&] { beat(stage); }).join();
    EXPECT_EQ(stage.pipeline->takeCalls(), "callBack render afterFlush");
}

TEST_F(HandOverTest, GivesTheContextBackWithTheLastUnlock) {
    Stage stage;
    stage.view->RenderThreadLock();
    stage.view->RenderThreadLock();
    stage.view->makeCurrentContext();
    stage.view->RenderThreadUnLock();
    EXPECT_EQ(NSOpenGLContext::currentContext(), stage.view->existingOpenGLContext());
    stage.view->RenderThreadUnLock();
    EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
}

TEST_F(HandOverTest, HoldsTheContextsLockForTheWholeOfARefresh) {
    Stage stage;
    NSOpenGLContext::clearCurrentContext();
    std::atomic<bool> taken{false};
    bool takenInside = false;
    std::thread other;
    stage.pipeline->onRender = [&] {
        other = std::thread([&] {
            CGLLockContext(stage.view->existingOpenGLContext());
            taken = true;
            CGLUnlockContext(stage.view->existingOpenGLContext());
        });
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        takenInside = taken;
    };
    beat(stage);
    other.join();
    EXPECT_FALSE(takenInside);
    EXPECT_TRUE(taken);
}

TEST_F(HandOverTest, WhoGetsTheLockFindsTheContextFree) {
    Stage stage;
    NSOpenGLContext::clearCurrentContext();
    std::atomic<int> refused{0};
    const auto work = [&] {
        for (int i = 0; i < 2000; ++i) {
            stage.view->RenderThreadLock();
            refused += !stage.view->existingOpenGLContext()->tryMakeCurrentContext();
            stage.view->RenderThreadUnLock();
        }
    };
    std::thread first(work), second(work);
    first.join();
    second.join();
    EXPECT_EQ(refused, 0);
}

TEST_F(HandOverTest, LetsTheHostWorkOnGLObjectsBetweenFrames) {
    Stage stage(Stage::Draws::byItself);
    std::atomic<unsigned> shared{0};
    std::atomic<int> seen{0};
    stage.onRender([&] {
        if (const unsigned name = shared)
            seen += glIsTexture(name);
    });
    for (int round = 0; round < 30; ++round) {
        stage.view->RenderThreadLock();
        stage.view->makeCurrentContext();
        ASSERT_TRUE(stage.view->existingOpenGLContext()->isCurrent());
        GLuint name = shared;
        if (name)
            glDeleteTextures(1, &name);
        glGenTextures(1, &name);
        glBindTexture(GL_TEXTURE_2D, name);
        shared = name;
        stage.view->RenderThreadUnLock();
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    EXPECT_GT(seen, 0) << "frames were drawn in between";
}

TEST_F(HandOverTest, StopsUnderTheHostsOwnHoldOfTheLock) {
    Stage stage(Stage::Draws::byItself);
    stage.view->RenderThreadLock();
    std::this_thread::sleep_for(std::chrono::milliseconds(40));
    stage.view->stopRender();
    EXPECT_EQ(stage.view->displayLink(), nullptr);
    stage.view->RenderThreadUnLock();
}

TEST_F(HandOverTest, ResizesItsSurfaceWhileDrawing) {
    Stage stage(Stage::Draws::byItself);
    std::atomic<int> frames{0};
    stage.onRender([&] {
        glClear(GL_COLOR_BUFFER_BIT);
        ++frames;
    });
    for (int i = 0; i < 20; ++i) {
        stage.window->setFrame(CGRectMake(0, 0, 32 + i * 8, 32 + i * 4));
        stage.step();
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    EXPECT_GT(frames, 5);
    EXPECT_EQ(stage.view->bounds().size.width, 184.0);
}

TEST_F(HandOverTest, StartsNothingWithAContextThatIsNotToBeHad) {
    Stage stage;
    LogCollector log;
    NSOpenGLContext::clearCurrentContext();
    stage.view->makeCurrentContext();
    std::thread([&] { stage.view->startRender(); }).join();
    EXPECT_EQ(stage.view->displayLink(), nullptr);
    EXPECT_EQ(stage.pipeline->takeCalls(), "");
    EXPECT_EQ(log.count("stays current on another thread"), 1);
}

TEST_F(HandOverTest, SurvivesThreadsThatStopStartAndWorkAtRandom) {
    Stage stage(Stage::Draws::byItself);
    std::atomic<bool> done{false};
    std::atomic<int> worked{0};
    const auto work = [&](unsigned seed) {
        while (!done) {
            std::this_thread::sleep_for(std::chrono::milliseconds(rand_r(&seed) % 4));
            stage.view->RenderThreadLock();
            stage.view->makeCurrentContext();
            GLuint name = 0;
            glGenTextures(1, &name);
            glDeleteTextures(1, &name);
            ++worked;
            stage.view->RenderThreadUnLock();
        }
    };
    std::thread first(work, 1), second(work, 2);
    unsigned seed = 3;
    for (int round = 0; round < 40; ++round) {
        // The hold keeps the others off the context while it is this thread's.
        stage.view->RenderThreadLock();
        stage.view->stopRender();
        if (rand_r(&seed) % 2)
            stage.view->stopRender();
        stage.view->startRender();
        stage.view->RenderThreadUnLock();
        stage.view->SetSkipRenderThread(rand_r(&seed) % 2);
        std::this_thread::sleep_for(std::chrono::milliseconds(rand_r(&seed) % 20));
    }
    done = true;
    first.join();
    second.join();
    EXPECT_GT(worked, 20);
    EXPECT_NE(stage.view->displayLink(), nullptr);
}

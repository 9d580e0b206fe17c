// SPDX-License-Identifier: MIT
#include <tests/support/ScriptedPipeline.h>

#include <epoxy/gl.h>

#include <latch>

using namespace vx::test;
using HandOverTest = HeadlessTest;

namespace {

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
    EXPECT_TRUE(current && !takenInside && taken);
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
    EXPECT_TRUE(!stage.view->displayLink() && stage.pipeline->takeCalls().empty());
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

TEST_F(HandOverTest, AThreadThatWaitsForTheLockDoesNotKeepTheContextFromItsHolder) {
    Stage stage;
    stage.view->makeCurrentContext();
    std::latch locked(1);
    bool got = false;
    std::thread holder([&] {
        stage.view->RenderThreadLock();
        locked.count_down();
        got = stage.view->makeCurrentContext();
        stage.view->RenderThreadUnLock();
    });
    locked.wait();
    stage.view->RenderThreadLock();
    EXPECT_TRUE(got);
    EXPECT_TRUE(stage.view->existingOpenGLContext()->isCurrent()) << "and has it again";
    stage.view->RenderThreadUnLock();
    holder.join();
}

TEST_F(HandOverTest, WhoWaitsGetsTheTurnAfterWhoTriesAgainAtOnce) {
    Stage stage;
    NSOpenGLContext* context = stage.view->existingOpenGLContext();
    NSOpenGLContext::clearCurrentContext();
    auto lock = NSInit(new NSRecursiveLock);
    const auto turnsWaited = [](auto tryTake, auto give, auto take) {
        std::atomic<int> turns{0};
        std::atomic<bool> done{false};
        std::thread drawing([&] {
            while (!done)
                if (tryTake()) {
                    std::this_thread::sleep_for(std::chrono::milliseconds(3));
                    ++turns;
                    give();
                }
        });
        int all = 0;
        for (int wait = 0; wait < 30; ++wait) {
            EXPECT_TRUE(waitFor([&, before = turns.load()] { return turns > before; })) << "and then goes on";
            const int before = turns;
            take();
            all += turns - before;
            give();
        }
        done = true;
        drawing.join();
        return all;
    };
    // The one in progress each time; without a promise it is two and more.
    EXPECT_LE(turnsWaited([&] { return lock->tryLock(); }, [&] { lock->unlock(); }, [&] { lock->lock(); }),
              40);
    EXPECT_LE(turnsWaited([&] { return context->tryMakeCurrentContext(); },
                          [] { NSOpenGLContext::clearCurrentContext(); },
                          [&] { EXPECT_TRUE(context->makeCurrentContext()); }),
              40);
}

// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/host/VX_GLSharedView.h>
#include <VX_Platform/Foundation/NSString.h>
#include <tests/support/Pixels.h>
#include <tests/support/ScriptedPipeline.h>

#include <latch>

using namespace vx::test;
using SharedViewTest = HeadlessTest;

namespace {

struct SharedStage : Stage {
    using Stage::Stage;

    class Pipeline : public ScriptedPipeline {
    public:
        VX_RETURNS_OWN_TYPE(Pipeline)
        void renderSubPipeline(CGRect* bounds, VX_GLSharedView* view) override {
            if (onChild)
                onChild(bounds->size, view);
        }
        std::function<void(CGSize, VX_GLSharedView*)> onChild;
    };

    /// A child in a window of its own, which is shown only where asked for: without it, it never gets ready.
    NSRef<VX_GLSharedView> addChild(CGSize size, bool shown = true) {
        auto child = NSInit(new VX_GLSharedView, CGRect{{}, size}, nullptr);
        windows.push_back(NSInit(new NSWindow, CGRect{{}, size}, NSTitledWindowMask));
        windows.back()->setContentView(child.get());
        if (shown)
            windows.back()->makeKeyAndOrderFront();
        child->setRenderpipeline(children.get());
        view->addChildSharedView(child.get());
        return child;
    }
    /// Sets the children up and lets the run loop get them ready.
    void initChildren() {
        view->initChildShardedViews();
        step();
        NSOpenGLContext::clearCurrentContext();
    }
    ~SharedStage() {
        view->stopRender();
        view->releaseResources();
        view->removeAllChildSharedViews();
        for (const auto& window : windows)
            window->close();
    }

    std::vector<NSRef<NSWindow>> windows;
    NSRef<Pipeline> children = NSInit(new Pipeline);
};

bool isCurrent(VX_GLSharedView* child) {
    return child->existingOpenGLContext() && child->existingOpenGLContext()->isCurrent();
}

} // namespace

TEST_F(SharedViewTest, EachChildDrawsIntoItsOwnSurfaceWithTheMainViewsObjects) {
    SharedStage stage;
    const auto red = stage.addChild({40, 30}), blue = stage.addChild({20, 10}),
               hidden = stage.addChild({9, 9}, false);
    stage.initChildren();
    unsigned texture = 0;
    stage.pipeline->onRender = [&] {
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        clearTo(0, 1, 0);
    };
    std::string drawn;
    stage.children->onChild = [&](CGSize size, VX_GLSharedView* child) {
        drawn += std::to_string(int(size.width)) + "x" + std::to_string(int(size.height)) +
                 (isCurrent(child) && glIsTexture(texture) ? " " : " with another's context ");
        clearTo(child == red.get(), 0, child == blue.get());
    };
    NSOpenGLContext* atTheEnd = nullptr;
    stage.pipeline->onAfterFlush = [&] { atTheEnd = NSOpenGLContext::currentContext(); };
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");
    EXPECT_EQ(drawn, "40x30 20x10 0x0 ") << "what is not ready has no size";
    EXPECT_EQ(atTheEnd, hidden->existingOpenGLContext());
    const std::pair<NSOpenGLView*, unsigned> pictures[] = {
        {red.get(), 0xFF0000FF}, {blue.get(), 0x0000FFFF}, {stage.view.get(), 0x00FF00FF}};
    for (const auto& [view, color] : pictures) {
        view->openGLContext()->makeCurrentContext();
        EXPECT_EQ(pixelAt(5, 5), color);
        int retraces = -1;
        view->openGLContext()->getValues(&retraces, NSOpenGLCPSwapInterval);
        EXPECT_EQ(retraces, view == stage.view.get()) << "the main view alone paces";
    }
    NSOpenGLContext::clearCurrentContext();

    drawn.clear();
    stage.windows[0]->setFrame(CGRectMake(0, 0, 80, 60));
    stage.step();
    stage.frame();
    EXPECT_EQ(drawn, "40x30 20x10 0x0 ") << "a resize leaves a child as it was made";
    drawn.clear();
    stage.initChildren();
    stage.frame();
    EXPECT_EQ(drawn, "80x60 20x10 0x0 ");
    drawn.clear();
    for (const double side : {50.0, 60.0}) {
        for (const auto& window : {stage.windows[0], stage.windows[1]})
            window->setFrame(CGRectMake(0, 0, side, side));
        if (side == 50.0)
            blue->SetFollowsSize(true);
        stage.step();
        stage.frame();
    }
    EXPECT_EQ(drawn, "80x60 50x50 0x0 80x60 60x60 0x0 ") << "but for one that was asked to follow";
    drawn.clear();
    stage.children->onChild = [&](CGSize, VX_GLSharedView*) {
        drawn += "child ";
        stage.view->stopRender();
    };
    EXPECT_EQ(stage.frame(), "callBack render notify stop detach");
    EXPECT_EQ(drawn, "child ") << "a child may end drawing too";
}

TEST_F(SharedViewTest, KeepsPropertiesOwnerAndContextAsItsLifeHasThem) {
    SharedStage stage;
    const int owners = stage.view->retainCount();
    auto child = stage.addChild({8, 8});
    const auto bare = NSInit(new VX_GLSharedView, CGRectMake(0, 0, 8, 8), nullptr);
    NSString* key = NSString::stringWithUTF8String("colour");
    bare->setObject(key, key);
    bare->setRenderpipeline(stage.children.get());
    EXPECT_EQ(bare->objectForKey(key), nullptr) << "there was no dictionary yet";
    bare->setObject(key, key);
    bare->setRenderpipeline(stage.children.get());
    EXPECT_EQ(bare->objectForKey(key), key);

    stage.initChildren();
    const NSRef<NSOpenGLContext> first = NSRef<NSOpenGLContext>::retain(child->existingOpenGLContext());
    stage.initChildren();
    EXPECT_NE(child->existingOpenGLContext(), first.get());
    EXPECT_TRUE(child->existingOpenGLContext()->sharesWith(stage.view->openGLContext()));
    EXPECT_EQ(first->retainCount(), 1) << "the view has given the former one up";
    EXPECT_EQ(stage.view->retainCount(), owners + 1);

    NSOpenGLContext* drewWith = nullptr;
    stage.children->onChild = [&](CGSize, VX_GLSharedView*) { drewWith = NSOpenGLContext::currentContext(); };
    child->releaseResources();
    child->releaseResources();
    EXPECT_EQ(stage.view->retainCount(), owners);
    stage.frame();
    EXPECT_EQ(drewWith, stage.view->openGLContext()) << "it draws on what is current";
    stage.initChildren();
    stage.frame();
    EXPECT_EQ(drewWith, child->existingOpenGLContext());

    // The child's context stays current here, so another thread does not get it.
    drewWith = nullptr;
    const auto begin = std::chrono::steady_clock::now();
    std::thread([&] { EXPECT_EQ(stage.frame(), "callBack render afterFlush"); }).join();
    EXPECT_EQ(drewWith, nullptr) << "costs the child its frame, and the main view none";
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1)) << "nor any time";
    NSOpenGLContext::clearCurrentContext();

    std::latch locked(1);
    std::atomic<bool> frameEnds{false};
    std::thread frame([&] {
        stage.view->RenderThreadLock();
        locked.count_down();
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        frameEnds = true;
        stage.view->RenderThreadUnLock();
    });
    locked.wait();
    child->prepareOpenGL();
    EXPECT_TRUE(frameEnds);
    frame.join();

    child->initialization(nullptr);
    stage.frame();
    EXPECT_EQ(drewWith, nullptr) << "a child that got no context is not drawn over the main view";

    stage.initChildren();
    stage.view->releaseResources();
    EXPECT_EQ(child->existingOpenGLContext(), nullptr);
    stage.view->SetStepped(true);
    stage.attachPipeline();
    stage.step();
    EXPECT_TRUE(child->existingOpenGLContext()->sharesWith(stage.view->openGLContext()));
    stage.view->removeAllChildSharedViews();
    drewWith = nullptr;
    EXPECT_TRUE(stage.pipeline->takeCalls().ends_with("attach start"));
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");
    EXPECT_EQ(drewWith, nullptr) << "a child no more";
    NSOpenGLContext::clearCurrentContext();
    stage.windows[0]->close();
    child->initialization(nullptr);
    child = nullptr; // ends without an owner
}

TEST_F(SharedViewTest, SettingChildrenUpHoldsNoFrameUp) {
    SharedStage stage(Stage::Draws::byItself);
    using Clock = std::chrono::steady_clock;
    std::atomic<double> longestGap{0.0};
    std::atomic<int> astray{0}, childFrames{0};
    stage.children->onChild = [&](CGSize, VX_GLSharedView* child) {
        astray += !isCurrent(child);
        ++childFrames;
    };
    Clock::time_point last;
    stage.onRender([&] {
        const auto now = Clock::now();
        if (last != Clock::time_point())
            longestGap = std::max(longestGap.load(), std::chrono::duration<double>(now - last).count());
        last = now;
        std::this_thread::sleep_for(std::chrono::milliseconds(9));
    });
    stage.view->RenderThreadLock();
    for (const int side : {8, 16, 24})
        stage.addChild({double(side), double(side)});
    stage.view->RenderThreadUnLock();
    for (int i = 0; i < 5; ++i) {
        stage.view->initChildShardedViews();
        const int before = childFrames;
        EXPECT_TRUE(waitFor([&] { return childFrames > before + 6; }, [&] { stage.step(); }));
    }
    stage.onRender({});
    EXPECT_EQ(astray, 0);
    EXPECT_LT(longestGap, 0.5) << "about 0.03 on a machine that does nothing else";
}

// SPDX-License-Identifier: MIT
// What careless hosts do, and what it may not lead to.
#include <VX_OpenGL64/targets/VX_GLRenderTarget.h>
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/ScriptedPipeline.h>

#include <cstdlib>
#include <memory>

using namespace vx::test;

namespace {

// GL objects that end with the pipeline, and not in one of its hooks.
struct Members {
    std::unique_ptr<VX_GLVBOVertex> buffer;
    VX_GLRenderTarget target;
};

std::shared_ptr<Members> startWithMembers(Stage& stage) {
    const auto members = std::make_shared<Members>();
    stage.pipeline->onStart = [members] {
        members->buffer = std::make_unique<VX_GLVBOVertex>();
        members->target.SetResolution(8, 8);
        members->target.CreateFrameBuffer();
    };
    stage.attachPipeline();
    stage.step();
    return members;
}

struct Teardown : HeadlessTest {};

} // namespace

TEST_F(Teardown, OfAViewEndsItsPipelinesObjectsWhereThereIsAContextAndElseTellsOfThem) {
    for (const bool released : {false, true}) {
        LogCollector log;
        Stage stage(Stage::Draws::byItself, {64, 48}, false);
        startWithMembers(stage);
        EXPECT_FALSE(NSApplication::sharedApplication()->terminatePlatform());
        if (released)
            stage.view->releaseResources();
        stage.window->close();
        stage.pipeline = nullptr;
        stage.view = nullptr;
        EXPECT_EQ(log.count("was still drawing"), 1);
        EXPECT_EQ(log.count("VX_GLVBOVertex: OpenGL object 1 is not deleted"), released ? 1 : 0);
        EXPECT_EQ(log.count("is not deleted"), released ? 2 : 0);
        EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
    }
}

TEST_F(Teardown, IsNotAskedOfAMainThatJustReturns) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto justReturn = [] {
        static Stage* stage = new Stage(Stage::Draws::byItself, {64, 48}, false);
        static std::shared_ptr<Members> last = startWithMembers(*stage);
        static NSRef<VX_GLMainView> view = std::move(stage->view);
        stage->pipeline->onStart = {};
        std::exit(0);
    };
    EXPECT_EXIT(justReturn(), testing::ExitedWithCode(0), "VX_GLVBOVertex: OpenGL object 1 is not deleted");
}

TEST_F(Teardown, OfAContextWhileDrawingLeavesItToTheFramesAndAViewMayBeSetUpByItself) {
    Stage stage;
    const auto context = NSRef<NSOpenGLContext>::retain(stage.view->openGLContext());
    const int others = context->retainCount() - 1;
    stage.view->clearGLContext();
    EXPECT_EQ(context->retainCount(), others) << "the view's is gone, that of its frames is not";
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");

    for (const auto& view : {NSInit(new VX_GLMainView), NSInit(new VX_GLMainView, CGRectMake(0, 0, 8, 8))}) {
        view->stopRender();
        view->releaseResources();
    }
}

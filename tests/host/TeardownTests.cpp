// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>
#include <tests/support/ScriptedPipeline.h>

#include <cstdlib>
#include <memory>

using namespace vx::test;
using Teardown = HeadlessTest;

namespace {

// A GL object that ends with the pipeline, and not in one of its hooks.
using Member = std::shared_ptr<std::unique_ptr<VX_GLVBOVertex>>;

Member startWithMember(Stage& stage) {
    const auto member = std::make_shared<Member::element_type>();
    stage.pipeline->onStart = [member] { *member = std::make_unique<VX_GLVBOVertex>(); };
    stage.attachPipeline();
    stage.step();
    return member;
}

} // namespace

TEST_F(Teardown, OfAViewEndsItsPipelinesObjectsWhereThereIsAContextAndElseTellsOfThem) {
    for (const bool released : {false, true}) {
        LogCollector log;
        Stage stage(Stage::Draws::byItself, {64, 48}, false);
        startWithMember(stage);
        EXPECT_FALSE(NSApplication::sharedApplication()->terminatePlatform());
        if (released)
            stage.view->releaseResources();
        stage.window->close();
        stage.pipeline = nullptr;
        stage.view = nullptr;
        EXPECT_EQ(log.count("was still drawing"), 1);
        EXPECT_EQ(log.count("VX_GLVBOVertex: OpenGL object 1 is not deleted"), released ? 1 : 0);
        EXPECT_EQ(NSOpenGLContext::currentContext(), nullptr);
    }
}

TEST_F(Teardown, IsNotAskedOfAMainThatJustReturns) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto justReturn = [] {
        static Stage* stage = new Stage(Stage::Draws::byItself, {64, 48}, false);
        static Member last = startWithMember(*stage);
        static NSRef<VX_GLMainView> view = std::move(stage->view);
        stage->pipeline->onStart = {};
        std::exit(0);
    };
    EXPECT_EXIT(justReturn(), testing::ExitedWithCode(0), "VX_GLVBOVertex: OpenGL object 1 is not deleted");
}

TEST_F(Teardown, OfAContextWhileDrawingLeavesItToTheFrames) {
    Stage stage;
    const auto context = NSRef<NSOpenGLContext>::retain(stage.view->openGLContext());
    stage.view->clearGLContext();
    EXPECT_EQ(context->retainCount(), 2) << "the view's is gone, that of its frames is not";
    EXPECT_EQ(stage.frame(), "callBack render afterFlush");

    stage.pipeline->onStop = [&] { std::exchange(stage.view, nullptr); };
    stage.window->close();
    auto* ended = stage.view.get();
    ended->stopRender();

    for (const auto& view : {NSInit(new VX_GLMainView), NSInit(new VX_GLMainView, CGRectMake(0, 0, 8, 8))}) {
        view->stopRender();
        view->releaseResources();
    }
}

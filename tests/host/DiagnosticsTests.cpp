// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/VX_Diagnostics.h>
#include <tests/support/ScriptedPipeline.h>
#include <tests/support/SteppedClock.h>

using namespace vx::test;
using DiagnosticsTest = HeadlessTest;

TEST_F(DiagnosticsTest, NameAViewThatNobodySeesAfterASecond) {
    SteppedClock clock;
    LogCollector log;
    VX_SetDiagnostics(true);
    const CGRect frame{{}, {8, 8}};
    const auto window = NSInit(new NSWindow, frame, NSTitledWindowMask),
               shown = NSInit(new NSWindow, frame, 0);
    shown->makeKeyAndOrderFront();
    const auto pipeline = NSInit(new ScriptedPipeline);
    NSRef<VX_GLMainView> views[4]; // without a window, in one never shown, in one that is, and gone
    for (NSRef<VX_GLMainView>& view : views) {
        view = NSInit(new VX_GLMainView, frame, nullptr);
        view->AddPixelFormatAttribute(NSOpenGLPFADoubleBuffer);
        ASSERT_TRUE(view->initializationWithPixelFormat(pipeline.get(), view->GetPixelFormatAttributes()));
    }
    VX_SetDiagnostics(false);
    window->setContentView(views[1].get());
    shown->setContentView(views[2].get());
    views[3] = nullptr;
    clock.step(SteppedClock::kSecond * 9 / 10);
    NSApplication::sharedApplication()->runStep(0.0);
    EXPECT_EQ(log.count("draws nothing"), 0);
    clock.step(SteppedClock::kSecond / 5);
    NSApplication::sharedApplication()->runStep(0.0);
    EXPECT_EQ(log.count("draws nothing: it is in no window"), 1);
    EXPECT_EQ(log.count("draws nothing: it is in a window that was never shown"), 1);
    EXPECT_EQ(log.count("draws nothing"), 2);
    views[2]->stopRender();
}

// SPDX-License-Identifier: MIT
// What a frame costs beside its drawing: locks, hand-over of the context, pool, hooks, swap.
#include <bench/RatioTable.h>
#include <bench/RunningView.h>

#include <VX_Platform/OpenGL/NSOpenGLContext.h>

#include <epoxy/egl.h>
#include <epoxy/gl.h>

namespace {

constexpr int Size = 64;

// Finished at once: the drawing itself is no part of the cost, and nothing would ever ask the raw frames for
// it.
void drawNothingMuch() {
    glViewport(0, 0, Size, Size);
    glClear(GL_COLOR_BUFFER_BIT);
    glFinish();
}

class ClearingPipeline : public VX_GLRenderpipeline {
public:
    void callBackRender() override { ++frames; }
    void renderPipeline(CGRect*) override { drawNothingMuch(); }
    int frames = 0;
};

void frame(benchmark::State& state) {
    auto pipeline = NSRef<ClearingPipeline>::adopt(new ClearingPipeline);
    pipeline->init();
    vx::bench::RunningView running(Size, Size, pipeline.get());
    if (!running.ok())
        return state.SkipWithError("no view");
    running.stepByHand();
    const int before = pipeline->frames;
    for (auto _ : state)
        running.refresh();
    if (pipeline->frames - before != int(state.iterations()))
        state.SkipWithError("frames were lost");
}

// The same calls, the context staying current.
void raw(benchmark::State& state) {
    auto pipeline = NSRef<ClearingPipeline>::adopt(new ClearingPipeline);
    pipeline->init();
    vx::bench::RunningView running(Size, Size, pipeline.get());
    if (!running.ok())
        return state.SkipWithError("no view");
    running.stepByHand();
    running.view()->makeCurrentContext();
    EGLDisplay display = eglGetCurrentDisplay();
    EGLSurface surface = eglGetCurrentSurface(EGL_DRAW);
    for (auto _ : state) {
        drawNothingMuch();
        eglSwapBuffers(display, surface);
    }
    NSOpenGLContext::clearCurrentContext();
}

const bool registered = vx::bench::addRow({.name = "frame's own cost, 64 x 64",
                                           .limit = raw,
                                           .ours = frame,
                                           .must = 10,
                                           .aim = 2,
                                           .inMicroseconds = true});

} // namespace

// SPDX-License-Identifier: MIT
// A frame that is recorded, beside reading its pixels back and beside the frame alone; and what it costs to
// watch shader files.
#include <bench/RatioTable.h>

#include <VX_OpenGL64/output/VX_GLFrameRecorder.h>
#include <VX_OpenGL64/shaders/VX_GLFilter.h>
#include <VX_OpenGL64/shaders/VX_GLFilterManager.h>
#include <tests/support/HeadlessContext.h>

#include <epoxy/gl.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <thread>
#include <vector>

#include <unistd.h>

namespace {

using vx::test::HeadlessContext;

constexpr int Width = 1920;
constexpr int Height = 1080;

void draw() {
    glClear(GL_COLOR_BUFFER_BIT);
    glFinish();
}

// All candidates draw at the rate of a display, at which a frame is written by the time of the next one.
void awaitRefresh(benchmark::State& state) {
    state.PauseTiming();
    std::this_thread::sleep_for(std::chrono::milliseconds(16));
    state.ResumeTiming();
}

void frameAlone(benchmark::State& state) {
    const HeadlessContext context(Width, Height);
    for (auto _ : state) {
        draw();
        awaitRefresh(state);
    }
}

void frameReadBack(benchmark::State& state) {
    const HeadlessContext context(Width, Height);
    std::vector<std::uint8_t> pixels(std::size_t(Width) * Height * 4);
    for (auto _ : state) {
        draw();
        glReadPixels(0, 0, Width, Height, GL_BGRA, GL_UNSIGNED_BYTE, pixels.data());
        awaitRefresh(state);
    }
}

void frameRecorded(benchmark::State& state) {
    const HeadlessContext context(Width, Height);
    VX_GLFrameRecorder recorder;
    if (!recorder.OpenProgram("cat > /dev/null", Width, Height, VX_GLFrameRecorderBehind::drop))
        return state.SkipWithError("no recorder");
    for (auto _ : state) {
        draw();
        recorder.TakeFrame();
        awaitRefresh(state);
    }
    if (!recorder.Finish() || recorder.GetDroppedFrames())
        state.SkipWithError("frames were lost");
}

struct CopyFilter : VX_GLFilter {
    CopyFilter() : VX_GLFilter(nullptr) {}
    const VX_GLShaderInformation* ShadersInformation() override {
        static const VX_GLShaderInformation rows[] = {{"copy.vert", "copy.frag"}, {nullptr, nullptr}};
        return rows;
    }
    bool NeedFrameBuffer() override { return false; }
};

void nothing(benchmark::State& state) {
    for (auto _ : state)
        benchmark::ClobberMemory();
}

void noChange(benchmark::State& state) {
    const HeadlessContext context(64, 64);
    const auto folder = std::filesystem::temp_directory_path() / ("vx_bench_" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    std::ofstream(folder / "copy.vert") << "void main() { gl_Position = gl_Vertex; }";
    std::ofstream(folder / "copy.frag") << "void main() { gl_FragColor = vec4(1); }";
    {
        VX_GLFilterManager manager;
        CopyFilter filter;
        manager.AddResourcePath(folder.c_str());
        const bool watches = manager.WatchShaderFiles(true);
        manager.SetupFilter(&filter, 64, 64, GL_RGBA8, GL_UNSIGNED_BYTE);
        if (!watches || filter.m_Programs.size() != 1)
            state.SkipWithError("no filter");
        for (auto _ : state)
            benchmark::DoNotOptimize(manager.RebuildChangedPrograms());
    }
    std::filesystem::remove_all(folder);
}

using vx::bench::addRow;

const bool registered = addRow({.name = "recorded frame, 1920 x 1080, to its read-back",
                                .limit = frameReadBack,
                                .ours = frameRecorded,
                                .must = 1.15,
                                .aim = 1.00}) &&
                        addRow({.name = "recorded frame, 1920 x 1080, to the frame alone",
                                .limit = frameAlone,
                                .ours = frameRecorded}) &&
                        addRow({.name = "shader files watched, none changed",
                                .limit = nothing,
                                .ours = noChange,
                                .must = 0.05,
                                .aim = 0.01,
                                .inMicroseconds = true});

} // namespace

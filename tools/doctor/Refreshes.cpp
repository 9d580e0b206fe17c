// SPDX-License-Identifier: MIT
#include <tools/doctor/Doctor.h>
#include <tools/doctor/Report.h>

#include <VX_OpenGL64/host/VX_GLHost.h>
#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/CoreVideo/CVDisplayLink.h>
#include <VX_Platform/Foundation/NSString.h>

#include <epoxy/gl.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <vector>

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kSeconds = 2.0;
constexpr double kStep = 0.02;
// Of 0.2, 0.4 and 0.6.
constexpr int kColor[] = {51, 102, 153};

double secondsSince(Clock::time_point begin) {
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

/// Draws one colour and notes when.
class Pulse : public VX_GLRenderpipeline {
public:
    VX_RETURNS_OWN_TYPE(Pulse)

    void renderPipeline(CGRect* bounds) override {
        m_Times.push_back(Clock::now());
        glViewport(0, 0, static_cast<int>(bounds->size.width), static_cast<int>(bounds->size.height));
        glClearColor(0.2f, 0.4f, 0.6f, 1.0f);
        glClear(GL_COLOR_BUFFER_BIT);
        if (m_Times.size() == 1)
            glReadPixels(10, 10, 1, 1, GL_RGB, GL_UNSIGNED_BYTE, m_Pixel);
    }

    // Under the render lock.
    std::vector<Clock::time_point> m_Times;
    unsigned char m_Pixel[3] = {};

protected:
    ~Pulse() override = default;
};

struct Counts {
    std::size_t frames;
    std::uint64_t lost, missed;
    Clock::time_point when;
};

Counts countsOf(VX_GLMainView* view, const Pulse* pulse) {
    view->RenderThreadLock();
    const Counts counts = {pulse->m_Times.size(), view->GetLostRefreshes(),
                           CVDisplayLinkGetMissedRefreshes(view->displayLink()), Clock::now()};
    view->RenderThreadUnLock();
    return counts;
}

void step() {
    NSApplication::sharedApplication()->runStep(kStep);
}

bool waitForFrame(VX_GLHost* host, const Pulse* pulse) {
    const Clock::time_point begin = Clock::now();
    while (countsOf(host->view(), pulse).frames == 0 && !host->window()->isClosed()) {
        if (secondsSince(begin) > kSeconds)
            return false;
        step();
    }
    return true;
}

double at(const std::vector<double>& sorted, double share) {
    return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

double millisecondsBetween(Clock::time_point begin, Clock::time_point end) {
    return std::chrono::duration<double, std::milli>(end - begin).count();
}

void printIntervals(const Clock::time_point* times, std::size_t count, Clock::time_point end) {
    const double mean = millisecondsBetween(times[0], times[count - 1]) / static_cast<double>(count - 1);
    std::vector<double> intervals, deviations;
    for (std::size_t i = 1; i < count; ++i) {
        intervals.push_back(millisecondsBetween(times[i - 1], times[i]));
        deviations.push_back(std::abs(intervals.back() - mean));
    }
    // The one that has not ended yet.
    deviations.push_back(std::max(0.0, millisecondsBetween(times[count - 1], end) - mean));
    std::sort(intervals.begin(), intervals.end());
    std::sort(deviations.begin(), deviations.end());
    printRow("interval",
             textOf("mean %.3f ms (%.2f Hz), median %.3f ms", mean, 1000.0 / mean, at(intervals, 0.5)));
    printRow("deviation from it", textOf("p50 %.3f ms, p99 %.3f ms, worst %.3f ms", at(deviations, 0.5),
                                         at(deviations, 0.99), deviations.back()));
}

void printDisplay(NSWindow* window) {
    if (const NSScreen* screen = window->screen())
        printRow("display", textOf("%s, %.2f Hz announced", screen->localizedName()->UTF8String(),
                                   screen->refreshRate()));
}

void printLink(CVDisplayLinkRef link) {
    const double period = CVDisplayLinkGetActualOutputVideoRefreshPeriod(link);
    printRow("throttle", textOf("%s, %.2f Hz", CVDisplayLinkGetThrottleName(link), 1.0 / period));
}

void printFrames(const Counts& before, const Counts& after) {
    const double seconds = std::chrono::duration<double>(after.when - before.when).count();
    const std::size_t frames = after.frames - before.frames;
    printRow("frames",
             textOf("%zu in %.2f s (%.2f a second)", frames, seconds, static_cast<double>(frames) / seconds));
    printRow("lost refreshes", textOf("%llu, and %llu that the frame before took",
                                      static_cast<unsigned long long>(after.lost - before.lost),
                                      static_cast<unsigned long long>(after.missed - before.missed)));
}

void printPixel(const unsigned char (&pixel)[3]) {
    int difference = 0;
    for (int i = 0; i < 3; ++i)
        difference = std::max(difference, std::abs(pixel[i] - kColor[i]));
    printRow("a pixel read back", difference <= 1 ? "as drawn"
                                                  : textOf("%d %d %d for %d %d %d", pixel[0], pixel[1],
                                                           pixel[2], kColor[0], kColor[1], kColor[2]));
}

void waitTwoSeconds(const NSWindow* window) {
    const Clock::time_point begin = Clock::now();
    while (secondsSince(begin) < kSeconds && !window->isClosed())
        step();
}

void printMeasured(VX_GLHost* host, const Pulse* pulse, const Counts& before, const Counts& after) {
    VX_GLMainView* view = host->view();
    printDisplay(host->window());
    view->RenderThreadLock();
    printLink(view->displayLink());
    printFrames(before, after);
    // From the last frame before, so that a gap at the beginning counts.
    printIntervals(&pulse->m_Times[before.frames - 1], after.frames - before.frames + 1, after.when);
    printRow("drawing a frame", textOf("%.2f ms", 1000.0 / view->GetAvgFPS()));
    printPixel(pulse->m_Pixel);
    view->RenderThreadUnLock();
}

std::string measure(VX_GLHost* host, const Pulse* pulse) {
    const std::string lastOfLog = "; the log's last line: ";
    if (!waitForFrame(host, pulse))
        return "no frames within two seconds" + lastOfLog + lastLogLine();
    const Counts before = countsOf(host->view(), pulse);
    waitTwoSeconds(host->window());
    const Counts after = countsOf(host->view(), pulse);
    if (host->window()->isClosed())
        return "no frames, since the window has been closed" + lastOfLog + lastLogLine();
    if (after.frames == before.frames)
        return "no frames within two seconds, after a first one" + lastOfLog + lastLogLine();
    printMeasured(host, pulse, before, after);
    return {};
}

} // namespace

std::string printRefreshes(const char* picture) {
    printSection("Refreshes");
    const auto pulse = NSInit(new Pulse);
    VX_GLHostOptions options;
    options.title = "vx_doctor";
    options.width = 320;
    options.height = 180;
    options.closesOnEscape = false;
    options.pixelFormat = doctorPixelFormat();
    const auto host = VX_GLHost::open(pulse.get(), options);
    if (!host)
        return "no view: " + lastLogLine();
    std::string missing = measure(host.get(), pulse.get());
    if (missing.empty() && picture && !writeCalibration(host->view(), picture))
        missing = "no calibration picture: " + lastLogLine();
    return missing;
}

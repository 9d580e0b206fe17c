// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreVideo/CVDisplayLink.h>

#include <VX_Platform/CoreVideo/private/RefreshPacer.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>

#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>

#include <algorithm>
#include <mutex>
#include <thread>
#include <vector>

namespace {

// What the link's thread works on. It outlives the handle when a link is stopped from its own callback.
struct Run {
    Run(std::unique_ptr<vx::RefreshSource> source, double period) : pacer(std::move(source), period) {}

    vx::RefreshPacer pacer;
    CVDisplayLinkRef link = nullptr;
    CVDisplayLinkOutputCallback callback = nullptr;
    void* user = nullptr;
    std::atomic<bool> stopping{false};
};

// Threads that were stopped from their own callback and could not be waited for there.
struct RetiredThreads {
    std::mutex lock;
    std::vector<std::thread> threads;
};

RetiredThreads& retired() {
    static RetiredThreads* retired = new RetiredThreads;
    return *retired;
}

void joinRetiredThreads() {
    std::vector<std::thread> ended;
    {
        std::lock_guard guard(retired().lock);
        auto& all = retired().threads;
        const auto others = std::stable_partition(all.begin(), all.end(), [](const std::thread& thread) {
            return thread.get_id() == std::this_thread::get_id();
        });
        std::move(others, all.end(), std::back_inserter(ended));
        all.erase(others, all.end());
    }
    for (std::thread& thread : ended)
        thread.join();
}

// Real-time scheduling removes the tail of late wake-ups under load. It needs a privilege; without it the
// link does as well as it can.
void askForPromptWakeups() {
    const sched_param first{.sched_priority = 1};
    pthread_setschedparam(pthread_self(), SCHED_FIFO | SCHED_RESET_ON_FORK, &first);
    prctl(PR_SET_TIMERSLACK, 1UL);
    pthread_setname_np(pthread_self(), "display link");
}

void runLink(const std::shared_ptr<Run>& run) {
    askForPromptWakeups();
    const std::uint64_t period = static_cast<std::uint64_t>(run->pacer.measuredPeriod() * 1e9);
    CVTimeStamp output;
    output.videoRefreshPeriod = period;
    std::uint64_t callbacks = 0;
    while (const std::uint64_t refresh = run->pacer.wait()) {
        if (run->stopping)
            break;
        CVTimeStamp now;
        now.hostTime = vx::RefreshPacer::now();
        now.videoRefreshPeriod = period;
        now.frameCount = callbacks + run->pacer.missed();
        output.hostTime = refresh + period;
        output.frameCount = now.frameCount + 1;
        ++callbacks;
        CVOptionFlags flags = 0;
        run->callback(run->link, &now, &output, 0, &flags, run->user);
    }
    NSOpenGLContext::clearCurrentContext();
}

} // namespace

struct CVDisplayLink {
    // Not kept: the view decides how long its surface lives.
    std::weak_ptr<vx::Surface> surface;
    double period = 1.0 / 60.0;
    CVDisplayLinkOutputCallback callback = nullptr;
    void* user = nullptr;
    std::shared_ptr<Run> run;
    std::thread thread;
};

CVReturn CVDisplayLinkCreateWithActiveCGDisplays(CVDisplayLinkRef* link) {
    if (!link)
        return kCVReturnInvalidArgument;
    joinRetiredThreads();
    *link = new CVDisplayLink;
    vx::Platform* platform = vx::Platform::current();
    const std::vector<vx::DisplayInfo> displays =
        platform ? platform->displays() : std::vector<vx::DisplayInfo>();
    if (!displays.empty())
        (*link)->period = 1.0 / displays.front().refreshRate;
    return kCVReturnSuccess;
}

CVReturn CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(CVDisplayLinkRef link, CGLContextObj context,
                                                           CGLPixelFormatObj) {
    if (!link || !context)
        return kCVReturnInvalidArgument;
    const std::shared_ptr<vx::Surface> surface = context->surface();
    link->surface = surface;
    if (surface)
        link->period = 1.0 / surface->display().refreshRate;
    return kCVReturnSuccess;
}

CVReturn CVDisplayLinkSetOutputCallback(CVDisplayLinkRef link, CVDisplayLinkOutputCallback callback,
                                        void* user) {
    if (!link)
        return kCVReturnInvalidArgument;
    link->callback = callback;
    link->user = user;
    return kCVReturnSuccess;
}

CVReturn CVDisplayLinkStart(CVDisplayLinkRef link) {
    if (!link)
        return kCVReturnInvalidArgument;
    if (link->run)
        return kCVReturnDisplayLinkAlreadyRunning;
    if (!link->callback)
        return kCVReturnDisplayLinkCallbacksNotSet;
    const std::shared_ptr<vx::Surface> surface = link->surface.lock();
    link->run = std::make_shared<Run>(surface ? surface->makeRefreshSource() : nullptr, link->period);
    link->run->link = link;
    link->run->callback = link->callback;
    link->run->user = link->user;
    NSLog("Display link: %.2f Hz by %s", 1.0 / link->period, link->run->pacer.throttleName());
    link->thread = std::thread(runLink, link->run);
    return kCVReturnSuccess;
}

CVReturn CVDisplayLinkStop(CVDisplayLinkRef link) {
    if (!link)
        return kCVReturnInvalidArgument;
    if (!link->run)
        return kCVReturnDisplayLinkNotRunning;
    link->run->stopping = true;
    link->run->pacer.wake();
    if (link->thread.get_id() == std::this_thread::get_id()) {
        std::lock_guard guard(retired().lock);
        retired().threads.push_back(std::move(link->thread));
    } else {
        link->thread.join();
    }
    link->run.reset();
    return kCVReturnSuccess;
}

void CVDisplayLinkRelease(CVDisplayLinkRef link) {
    CVDisplayLinkStop(link);
    delete link;
}

bool CVDisplayLinkIsRunning(CVDisplayLinkRef link) {
    return link && link->run;
}

double CVDisplayLinkGetActualOutputVideoRefreshPeriod(CVDisplayLinkRef link) {
    if (!link)
        return 0.0;
    return link->run ? link->run->pacer.measuredPeriod() : link->period;
}

const char* CVDisplayLinkGetThrottleName(CVDisplayLinkRef link) {
    return link && link->run ? link->run->pacer.throttleName() : vx::RefreshPacer::kDeadlines;
}

std::uint64_t CVDisplayLinkGetMissedRefreshes(CVDisplayLinkRef link) {
    return link && link->run ? link->run->pacer.missed() : 0;
}

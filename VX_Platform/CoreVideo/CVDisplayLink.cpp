// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreVideo/CVDisplayLink.h>

#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/CoreVideo/private/RefreshPacer.h>
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/OpenGL/private/ContextInternals.h>

#include <pthread.h>
#include <sched.h>
#include <sys/prctl.h>

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

// What the link's thread works on. It outlives the handle when a link is stopped from its own callback.
struct Run {
    Run(std::shared_ptr<vx::SurfaceSlot> slot, const vx::SurfaceSlot::Place& place, double period)
        : slot(std::move(slot)), generation(place.generation), pacer(sourceOf(place), period) {}

    static std::unique_ptr<vx::RefreshSource> sourceOf(const vx::SurfaceSlot::Place& place) {
        return place.surface ? place.surface->makeRefreshSource() : nullptr;
    }
    void tell() const {
        if (!slot || slot->isNews(pacer.measuredPeriod(), pacer.throttleName()))
            NSLog("Display link: %.2f Hz by %s", 1.0 / pacer.measuredPeriod(), pacer.throttleName());
    }
    // The view may have another context by now, or be in another window or on another display.
    void followView() {
        const std::lock_guard guard(slotLock);
        if (!slot || slot->generation() == generation)
            return;
        const vx::SurfaceSlot::Place place = slot->place();
        generation = place.generation;
        if (!place.surface)
            return;
        pacer.follow(sourceOf(place), 1.0 / place.display.refreshRate);
        tell();
    }

    void follow(const std::shared_ptr<vx::SurfaceSlot>& other) {
        const std::lock_guard guard(slotLock);
        if (std::exchange(slot, other) != other)
            generation = 0;
    }

    std::mutex slotLock;
    std::shared_ptr<vx::SurfaceSlot> slot;
    unsigned generation;
    vx::RefreshPacer pacer;
    CVDisplayLinkRef link = nullptr;
    CVDisplayLinkOutputCallback callback = nullptr;
    void* user = nullptr;
    std::atomic<bool> stopping{false};
};

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
    while (const std::optional<vx::Refresh> refresh = run->pacer.wait()) {
        if (run->stopping)
            break;
        const CVTimeStamp now{vx::Clock::current().now(), refresh->period, refresh->count - 1};
        const CVTimeStamp output{refresh->time + refresh->period, refresh->period, refresh->count};
        CVOptionFlags flags = 0;
        run->callback(run->link, &now, &output, 0, &flags, run->user);
        run->followView();
    }
    NSOpenGLContext::clearCurrentContext();
}

} // namespace

struct CVDisplayLink {
    // Where the frames of the view's context go.
    std::shared_ptr<vx::SurfaceSlot> slot;
    double period = 1.0 / 60.0;
    CVDisplayLinkOutputCallback callback = nullptr;
    void* user = nullptr;
    std::shared_ptr<Run> run;
    std::thread thread;
};

CVReturn CVDisplayLinkCreateWithActiveCGDisplays(CVDisplayLinkRef* link) {
    if (!link)
        return kCVReturnInvalidArgument;
    *link = new CVDisplayLink;
    const std::vector<vx::DisplayInfo> displays = vx::presentDisplays();
    if (!displays.empty())
        (*link)->period = 1.0 / displays.front().refreshRate;
    return kCVReturnSuccess;
}

CVReturn CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(CVDisplayLinkRef link, CGLContextObj context,
                                                           CGLPixelFormatObj) {
    if (!link || !context)
        return kCVReturnInvalidArgument;
    link->slot = NSOpenGLContext::Internals::slotOf(context);
    if (link->run)
        link->run->follow(link->slot);
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
    const vx::SurfaceSlot::Place place = link->slot ? link->slot->place() : vx::SurfaceSlot::Place();
    if (place.surface)
        link->period = 1.0 / place.display.refreshRate;
    link->run = std::make_shared<Run>(link->slot, place, link->period);
    link->run->link = link;
    link->run->callback = link->callback;
    link->run->user = link->user;
    link->run->tell();
    try {
        link->thread = std::thread(runLink, link->run);
    } catch (const std::system_error& failure) {
        NSLog("Display link: no thread to draw on: %s", failure.what());
        link->run.reset();
        return kCVReturnAllocationFailed;
    }
    return kCVReturnSuccess;
}

CVReturn CVDisplayLinkStop(CVDisplayLinkRef link) {
    if (!link)
        return kCVReturnInvalidArgument;
    if (!link->run)
        return kCVReturnDisplayLinkNotRunning;
    link->run->stopping = true;
    link->run->pacer.wake();
    // From the callback nobody waits for the thread, then or later: its host may go on to wait for whoever
    // would.
    if (link->thread.get_id() == std::this_thread::get_id())
        link->thread.detach();
    else
        link->thread.join();
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

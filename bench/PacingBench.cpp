// SPDX-License-Identifier: MIT
// How evenly the display link calls back, headless and on X11.
#include <bench/PacingBench.h>

#include <bench/RatioTable.h>
#include <bench/RunningView.h>

#include <VX_Platform/CoreVideo/CVDisplayLink.h>
#include <VX_Platform/OpenGL/NSOpenGLContext.h>

#include <sys/timerfd.h>
#include <unistd.h>
#include <xcb/present.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <thread>
#include <vector>

namespace vx::bench {

namespace {

constexpr double Period = 1.0 / 60.0;

using Instants = std::vector<double>;

double now() {
    std::timespec time{};
    clock_gettime(CLOCK_MONOTONIC, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

std::timespec toTimespec(double seconds) {
    const double whole = std::floor(seconds);
    return {std::time_t(whole), long((seconds - whole) * 1e9)};
}

// 99th percentile of the intervals' deviations from the period, in milliseconds, the first second left out.
double deviation(const Instants& instants) {
    std::vector<double> deviations;
    for (std::size_t index = 61; index < instants.size(); ++index)
        deviations.push_back(std::fabs(instants[index] - instants[index - 1] - Period) * 1e3);
    if (deviations.empty())
        return None;
    std::sort(deviations.begin(), deviations.end());
    return deviations[std::size_t(0.99 * double(deviations.size() - 1) + 0.5)];
}

Instants sleepToDeadlines(double start, double end) {
    Instants instants;
    for (double deadline = start; deadline < end; deadline += Period) {
        const std::timespec time = toTimespec(deadline);
        clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &time, nullptr);
        instants.push_back(now());
    }
    return instants;
}

Instants readTimer(double start, double end) {
    Instants instants;
    const int timer = timerfd_create(CLOCK_MONOTONIC, 0);
    const itimerspec setting{toTimespec(Period), toTimespec(start)};
    timerfd_settime(timer, TFD_TIMER_ABSTIME, &setting, nullptr);
    std::uint64_t expirations = 0;
    while (now() < end && read(timer, &expirations, sizeof expirations) == sizeof expirations)
        instants.push_back(now());
    close(timer);
    return instants;
}

CVReturn noteRefresh(CVDisplayLinkRef, const CVTimeStamp*, const CVTimeStamp*, CVOptionFlags, CVOptionFlags*,
                     void* user) {
    static_cast<Instants*>(user)->push_back(now());
    return kCVReturnSuccess;
}

// The three run at once, a third of a period apart, so that what else the machine does hits them alike.
Reading measureHeadless() {
    Instants ours;
    Instants slept;
    Instants timed;
    CVDisplayLinkRef link = nullptr;
    if (CVDisplayLinkCreateWithActiveCGDisplays(&link) != kCVReturnSuccess)
        return {.failure = "no display link"};
    CVDisplayLinkSetOutputCallback(link, noteRefresh, &ours);
    CVDisplayLinkStart(link);
    const double start = now();
    const double end = start + pacingSeconds;
    std::thread sleeper([&] { slept = sleepToDeadlines(start + Period / 3, end); });
    std::thread timer([&] { timed = readTimer(start + 2 * Period / 3, end); });
    sleeper.join();
    timer.join();
    CVDisplayLinkRelease(link);
    return {.ours = deviation(ours), .limit = deviation(slept), .peers = {{"timerfd", deviation(timed)}}};
}

// The bare loop on the events that the link waits for on X11.
struct BareLoop {
    Instants instants;
    double lost = 0;
};

BareLoop readPresentEvents(double end) {
    BareLoop read;
    xcb_connection_t* connection = xcb_connect(nullptr, nullptr);
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    const std::uint32_t id = xcb_generate_id(connection);
    xcb_special_event_t* events = xcb_register_for_special_xge(connection, &xcb_present_id, id, nullptr);
    xcb_present_select_input(connection, id, root, XCB_PRESENT_EVENT_MASK_COMPLETE_NOTIFY);
    std::uint64_t last = 0;
    while (now() < end) {
        xcb_present_notify_msc(connection, root, 0, 0, 1, 0);
        xcb_flush(connection);
        xcb_generic_event_t* event = xcb_wait_for_special_event(connection, events);
        if (!event)
            break;
        const std::uint64_t count = reinterpret_cast<xcb_present_complete_notify_event_t*>(event)->msc;
        read.instants.push_back(now());
        if (last)
            read.lost += double(count - last) - 1;
        last = count;
        std::free(event);
    }
    xcb_disconnect(connection);
    return read;
}

struct OnX11 {
    double deviation = None;
    double limit = None;
    double lost = None;
    double bareLost = None;
    double refreshesToComeBack = None;
    std::string failure;
};

// In a process of its own: a process has one platform, and this one's is headless.
const OnX11& measureOnX11() {
    static const OnX11 result = [] {
        OnX11 measured;
        const std::string self = std::filesystem::read_symlink("/proc/self/exe");
        const std::string command =
            VX_WITH_XVFB " '" + self + "' --pacing-on-x11 " + std::to_string(pacingSeconds) + " 2>/dev/null";
        std::FILE* output = popen(command.c_str(), "r");
        if (!output || std::fscanf(output, "%lf %lf %lf %lf %lf", &measured.deviation, &measured.limit,
                                   &measured.lost, &measured.bareLost, &measured.refreshesToComeBack) != 5)
            measured.failure = "no X server";
        if (output)
            pclose(output);
        return measured;
    }();
    return result;
}

Reading readDeviationOnX11() {
    const OnX11& measured = measureOnX11();
    return {.ours = measured.deviation, .limit = measured.limit, .failure = measured.failure};
}

Reading readLostOnX11() {
    const OnX11& measured = measureOnX11();
    return {.ours = measured.lost, .limit = measured.bareLost, .failure = measured.failure};
}

Reading readReturnOnX11() {
    const OnX11& measured = measureOnX11();
    return {.ours = measured.refreshesToComeBack, .limit = 1, .failure = measured.failure};
}

const bool registered = addReading({.name = "display link headless, p99 deviation",
                                    .unit = "ms",
                                    .read = measureHeadless,
                                    .must = 0.15,
                                    .aim = 0.10}) &&
                        addReading({.name = "display link on X11, p99 deviation",
                                    .unit = "ms",
                                    .read = readDeviationOnX11,
                                    .must = 1.05,
                                    .aim = 1.00,
                                    .against = Against::ratio}) &&
                        addReading({.name = "display link on X11, lost refreshes",
                                    .unit = "",
                                    .read = readLostOnX11,
                                    .must = 0,
                                    .aim = 0,
                                    .against = Against::excess}) &&
                        addReading({.name = "refreshes back from a stalled X server",
                                    .unit = "",
                                    .read = readReturnOnX11,
                                    .must = 3,
                                    .aim = 1});

} // namespace

double pacingSeconds = 20;

namespace {

// Refreshes from the end of a stall of 250 ms to the first one by the server's events, the most of five.
double refreshesToComeBack(CVDisplayLinkRef link) {
    const char* server = std::getenv("XVFB_PID");
    if (!server)
        return None;
    const std::string byEvents = CVDisplayLinkGetThrottleName(link);
    double most = 0;
    for (int stall = 0; stall < 5; ++stall) {
        kill(std::atoi(server), SIGSTOP);
        std::this_thread::sleep_for(std::chrono::milliseconds(250));
        const double start = now();
        kill(std::atoi(server), SIGCONT);
        while (CVDisplayLinkGetThrottleName(link) != byEvents && now() < start + 5)
            std::this_thread::sleep_for(std::chrono::microseconds(200));
        most = std::max(most, (now() - start) / Period);
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
    }
    return std::ceil(most);
}

struct Deviations {
    double own = None;
    double bare = None;
};

// Of a link without frames to draw (what their drawing costs the server is not its doing) and of a bare loop
// at the same time. Two bare loops beside each other differ by a quarter in one round, so it is the median
// round of five.
Deviations deviationsBesideBareLoop(CVDisplayLinkRef link, Instants& own, double seconds) {
    std::vector<Deviations> rounds(5);
    for (Deviations& round : rounds) {
        own.clear();
        CVDisplayLinkStart(link);
        const BareLoop bare = readPresentEvents(now() + seconds);
        CVDisplayLinkStop(link);
        round = {deviation(own), deviation(bare.instants)};
    }
    std::sort(rounds.begin(), rounds.end(),
              [](const Deviations& a, const Deviations& b) { return a.own / a.bare < b.own / b.bare; });
    return rounds[2];
}

// Refreshes that a drawing view loses, beside a bare loop at the same time.
std::pair<double, double> lostWhileDrawing(RunningView& running, double seconds) {
    const auto lost = [&] {
        running.view()->RenderThreadLock();
        const auto count = running.view()->GetLostRefreshes() +
                           CVDisplayLinkGetMissedRefreshes(running.view()->displayLink());
        running.view()->RenderThreadUnLock();
        return double(count);
    };
    std::this_thread::sleep_for(std::chrono::duration<double>(1));
    const double before = lost();
    const BareLoop bare = readPresentEvents(now() + seconds);
    return {lost() - before, bare.lost};
}

} // namespace

int printPacingOnX11(double seconds) {
    auto pipeline = NSRef<VX_GLRenderpipeline>::adopt((new VX_GLRenderpipeline)->init());
    RunningView running(256, 256, pipeline.get());
    if (!running.ok())
        return 1;
    const auto [lost, bareLost] = lostWhileDrawing(running, seconds);
    running.view()->stopRenderThread();

    CVDisplayLinkRef link = nullptr;
    CVDisplayLinkCreateWithActiveCGDisplays(&link);
    CVDisplayLinkSetCurrentCGDisplayFromOpenGLContext(link, running.view()->openGLContext()->CGLContextObj(),
                                                      nullptr);
    Instants own;
    CVDisplayLinkSetOutputCallback(link, noteRefresh, &own);
    const Deviations deviations = deviationsBesideBareLoop(link, own, seconds);
    CVDisplayLinkStart(link);
    const double back = refreshesToComeBack(link);
    CVDisplayLinkRelease(link);
    std::printf("%f %f %f %f %f\n", deviations.own, deviations.bare, lost, bareLost, back);
    return 0;
}

} // namespace vx::bench

// SPDX-License-Identifier: MIT
#include <examples/support/ExampleHost.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/CoreVideo/CVDisplayLink.h>
#include <VX_Platform/Foundation/NSTimer.h>

#include <cstdio>
#include <filesystem>
#include <string_view>

namespace {

bool readSize(const char* text, VX_GLHostOptions& host) {
    char rest = 0;
    const int largest = 16384;
    return std::sscanf(text, "%dx%d%c", &host.width, &host.height, &rest) == 2 && host.width > 0 &&
           host.height > 0 && host.width <= largest && host.height <= largest;
}

bool readCount(const char* text, int& count) {
    char rest = 0;
    return std::sscanf(text, "%d%c", &count, &rest) == 1 && count > 0;
}

void printRate(VX_GLMainView* view) {
    view->RenderThreadLock();
    CVDisplayLinkRef link = view->displayLink();
    std::printf("%.2f frames/s, throttle: %s, refreshes lost: %llu, missed: %llu\n", view->GetFrameRate(),
                link ? CVDisplayLinkGetThrottleName(link) : "none, drawn by hand",
                static_cast<unsigned long long>(view->GetLostRefreshes()),
                static_cast<unsigned long long>(CVDisplayLinkGetMissedRefreshes(link)));
    view->RenderThreadUnLock();
    std::fflush(stdout);
}

int writePicture(VX_GLHost& host, const ExampleOptions& options) {
    const int frames = options.pictureFrames();
    NSApplication::sharedApplication()->runStep(0.0); // prepares the view
    for (int i = 0; i < frames; ++i) {
        if (!host.view()->StepFrame(i / 60.0, i + 1 == frames ? options.picture : nullptr))
            return 1;
    }
    std::printf("%s written\n", options.picture);
    return 0;
}

void showWindow(VX_GLHost& host, const ExampleOptions& options) {
    NSTimer* timer = nullptr;
    if (options.printsRate)
        timer = NSTimer::scheduledTimerWithTimeInterval(
            1.0, [&](NSTimer*) { printRate(host.view()); }, true);
    if (options.frames == 0)
        host.run();
    while (!host.window()->isClosed() && host.view()->GetDrawnFrames() < unsigned(options.frames))
        NSApplication::sharedApplication()->runStep(0.01);
    if (timer)
        timer->invalidate();
}

} // namespace

bool ExampleOptions::take(int count, char** words, int& i) {
    const std::string_view word = words[i];
    if (word == "--fps")
        return printsRate = true;
    const char* value = i + 1 < count ? words[++i] : nullptr;
    if (!value)
        return false;
    if (word == "--size")
        return readSize(value, host);
    if (word == "--frames")
        return readCount(value, frames);
    if (word == "--platform")
        return (host.platform = value);
    return word == "--headless" && (picture = value);
}

std::string ExampleOptions::pictureOf(const char* name) const {
    const std::filesystem::path path(picture);
    const std::string own = path.stem().string() + "_" + name + path.extension().string();
    return (path.parent_path() / own).string();
}

int runExample(VX_GLRenderpipeline* pipeline, const ExampleOptions& options,
               const std::function<void(VX_GLHost&)>& prepare) {
    VX_GLHostOptions hostOptions = options.host;
    hostOptions.stepped = options.picture != nullptr;
    hostOptions.headless = options.picture && !hostOptions.platform;
    const auto host = VX_GLHost::open(pipeline, hostOptions);
    if (!host)
        return 1;
    if (prepare)
        prepare(*host);
    int status = 0;
    if (options.picture)
        status = writePicture(*host, options);
    else
        showWindow(*host, options);
    if (options.printsRate)
        printRate(host->view());
    return status;
}

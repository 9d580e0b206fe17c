// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/Platform.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <mutex>
#include <optional>
#include <string_view>

namespace vx {

namespace {

struct Choice {
    std::mutex lock;
    std::optional<HeadlessOptions> headless;
    std::unique_ptr<Platform> platform;
    bool failed = false;
};

// Never destroyed: threads may still ask for it while the process ends.
Choice& choice() {
    static Choice* choice = new Choice;
    return *choice;
}

} // namespace

Platform* Platform::current() {
    Choice& c = choice();
    std::lock_guard guard(c.lock);
    if (!c.platform && !c.failed) {
        c.platform = c.headless ? makeHeadlessPlatform(*c.headless) : makeX11Platform();
        c.failed = !c.platform;
    }
    return c.platform.get();
}

bool Platform::isStarted() {
    Choice& c = choice();
    std::lock_guard guard(c.lock);
    return c.platform != nullptr;
}

void Platform::shutDown() {
    Choice& c = choice();
    std::unique_ptr<Platform> ending;
    {
        std::lock_guard guard(c.lock);
        ending = std::move(c.platform);
        c.failed = false;
    }
}

void chooseHeadlessPlatform(const HeadlessOptions& options) {
    Choice& c = choice();
    std::lock_guard guard(c.lock);
    if (c.platform && c.platform->name() != std::string_view("headless"))
        NSLog("The headless platform was chosen after the %s platform had been started; it stays as it is",
              c.platform->name());
    else if (!c.platform) {
        c.headless = options;
        c.failed = false;
    }
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/private/RunningPlatform.h>

#include <VX_Platform/AppKit/private/EventRouter.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <mutex>
#include <string_view>

namespace vx {

namespace {

struct Choice {
    std::mutex lock;
    const PlatformRow* chosen = nullptr;
    HeadlessOptions headless;
    std::shared_ptr<Platform> platform;
    bool failed = false;
};

// Never destroyed: threads may still ask for it while the process ends.
Choice& choice() {
    static Choice* choice = new Choice;
    return *choice;
}

std::shared_ptr<Platform> start(const Choice& c) {
    const PlatformRow* row = c.chosen ? c.chosen : platformPresent();
    if (!row) {
        NSLog(
            "No display: DISPLAY is not set. A host without one chooses the headless platform "
            "(NSApplication::useHeadlessPlatform)");
        return nullptr;
    }
    std::shared_ptr<Platform> platform = row->start(eventRouter(), c.headless);
    if (platform)
        NSLog("Platform: %s, %s", row->name, c.chosen ? "chosen by the host" : row->presence().c_str());
    return platform;
}

std::string knownNames() {
    std::string names;
    for (const PlatformRow& row : platformTable())
        names += (names.empty() ? "" : ", ") + std::string(row.name);
    return names;
}

} // namespace

std::shared_ptr<Platform> runningPlatform() {
    Choice& c = choice();
    std::lock_guard guard(c.lock);
    if (!c.platform && !c.failed) {
        c.platform = start(c);
        c.failed = !c.platform;
    }
    return c.platform;
}

std::shared_ptr<Platform> startedPlatform() {
    Choice& c = choice();
    std::lock_guard guard(c.lock);
    return c.platform;
}

std::vector<DisplayInfo> presentDisplays() {
    const std::shared_ptr<Platform> platform = runningPlatform();
    return platform ? platform->displays() : std::vector<DisplayInfo>();
}

bool choosePlatform(const char* name, const HeadlessOptions& headless) {
    const PlatformRow* row = name ? platformNamed(name) : nullptr;
    if (!row) {
        NSLog("There is no platform \"%s\"; known are %s", name ? name : "(null)", knownNames().c_str());
        return false;
    }
    Choice& c = choice();
    std::lock_guard guard(c.lock);
    if (c.platform) {
        if (std::string_view(c.platform->name()) == name)
            return true;
        NSLog("The %s platform was chosen after the %s platform had been started; it stays as it is", name,
              c.platform->name());
        return false;
    }
    c.chosen = row;
    c.headless = headless;
    c.failed = false;
    return true;
}

bool isPlatformChosen(const char* name) {
    Choice& c = choice();
    std::lock_guard guard(c.lock);
    if (c.platform)
        return std::string_view(c.platform->name()) == name;
    return c.chosen && std::string_view(c.chosen->name) == name;
}

void endPlatform() {
    replacePlatform(nullptr);
}

void replacePlatform(std::shared_ptr<Platform> platform) {
    Choice& c = choice();
    std::lock_guard guard(c.lock);
    c.platform.swap(platform);
    c.failed = false;
}

int presentAlert(const AlertContents& contents) {
    if (const std::shared_ptr<Platform> platform = startedPlatform())
        return platform->presentAlert(contents);
    // An alert alone starts no platform: it may come from any thread, and ahead of the host's set-up.
    const PlatformRow* row = nullptr;
    {
        Choice& c = choice();
        std::lock_guard guard(c.lock);
        row = c.chosen;
    }
    if (!row)
        row = platformPresent();
    return row ? row->presentAlert(contents) : logAlert(contents);
}

} // namespace vx

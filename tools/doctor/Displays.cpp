// SPDX-License-Identifier: MIT
#include <tools/doctor/Doctor.h>
#include <tools/doctor/Report.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSString.h>

namespace {

unsigned identifierOf(const NSScreen* screen) {
    auto* const number = static_cast<NSNumber*>(screen->deviceDescription()->objectForKey("NSScreenNumber"));
    return static_cast<unsigned>(number->intValue());
}

void printDisplay(const NSScreen* screen) {
    const CGRect frame = screen->frame();
    printRow(screen->localizedName()->UTF8String(),
             textOf("number %u, %.0f x %.0f at (%.0f, %.0f), %.2f Hz", identifierOf(screen), frame.size.width,
                    frame.size.height, frame.origin.x, frame.origin.y, screen->refreshRate()));
}

} // namespace

std::string printPlatform(const char* name) {
    printSection("Platform");
    NSApplication* application = NSApplication::sharedApplication();
    if ((name && !NSApplication::usePlatform(name)) || !application->finishLaunching()) {
        if (!name)
            printRow("without a display", "vx_doctor --platform headless");
        return "no platform: " + lastLogLine();
    }
    printRow("running", application->platformName());
    return {};
}

void printDisplays() {
    printSection("Displays");
    const NSMutableArray* screens = NSScreen::screens();
    for (NSObject* screen : screens->objects())
        printDisplay(static_cast<NSScreen*>(screen));
    if (screens->count() == 0)
        printRow("none", "views are paced at 60 Hz");
}

// SPDX-License-Identifier: MIT
#include <examples/output_screen/Displays.h>

#include <VX_OpenGL64/output/VX_GLScreenManager.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSString.h>

#include <cstdio>

std::string nameOf(const NSScreen* display) {
    const NSString* const name = display->localizedName();
    return name ? name->string() : std::string();
}

std::string sizeOf(const NSScreen* display) {
    const CGSize size = display->frame().size;
    char text[80];
    std::snprintf(text, sizeof text, "%.0f x %.0f   %.4g Hz", size.width, size.height,
                  display->refreshRate());
    return text;
}

std::vector<std::string> displayLines() {
    std::vector<std::string> lines;
    for (NSObject* const object : NSScreen::screens()->objects()) {
        const auto* const display = static_cast<NSScreen*>(object);
        const auto* const id =
            static_cast<NSNumber*>(display->deviceDescription()->objectForKey("NSScreenNumber"));
        char place[80];
        std::snprintf(place, sizeof place, "at %.0f, %.0f   identifier %d", display->frame().origin.x,
                      display->frame().origin.y, id->intValue());
        lines.push_back(std::to_string(lines.size() + 1) + "   " + nameOf(display) + "   " + sizeOf(display) +
                        "   " + place);
    }
    return lines;
}

NSRef<NSScreen> displayOfNumber(int number) {
    const NSMutableArray* const displays = NSScreen::screens();
    if (number < 1 || number > displays->count())
        return nullptr;
    return NSRef<NSScreen>::retain(static_cast<NSScreen*>(displays->objectAtIndex(number - 1)));
}

NSRef<NSScreen> displayOfName(const std::string& name) {
    for (int number = 1; const auto display = displayOfNumber(number); ++number)
        if (nameOf(display.get()) == name)
            return display;
    return nullptr;
}

bool isOnADisplay(CGRect rect) {
    CGDirectDisplayID found = 0;
    return NSInit(new VX_GLScreenManager)->searchDisplayIDFromRect(rect, &found);
}

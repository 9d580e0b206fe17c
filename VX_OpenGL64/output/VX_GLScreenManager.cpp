// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/output/VX_GLScreenManager.h>

#include <VX_Platform/AppKit/NSScreen.h>
#include <VX_Platform/AppKit/NSWindow.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSString.h>

namespace {

constexpr std::uint32_t kMostDisplays = 10;

} // namespace

VX_GLScreenManager* VX_GLScreenManager::init() {
    queryActiveDisplays();
    return this;
}

std::int32_t VX_GLScreenManager::queryActiveDisplays() {
    CGGetActiveDisplayList(kMostDisplays, m_DirectDisplayIDs, &m_DirectDisplayIDCount);
    return static_cast<std::int32_t>(m_DirectDisplayIDCount);
}

bool VX_GLScreenManager::isListed(std::int32_t index) const {
    return index >= 0 && static_cast<CGDisplayCount>(index) < m_DirectDisplayIDCount;
}

CGDirectDisplayID* VX_GLScreenManager::queryActiveDisplay(std::int32_t index) {
    return isListed(index) ? &m_DirectDisplayIDs[index] : nullptr;
}

NSString* VX_GLScreenManager::screenNameForDisplay(CGDirectDisplayID display) {
    const auto info = NSRef<NSMutableDictionary>::adopt(
        IODisplayCreateInfoDictionary(CGDisplayIOServicePort(display), kIODisplayOnlyPreferredName));
    auto* const names = static_cast<NSMutableDictionary*>(info->objectForKey("DisplayProductName"));
    if (!names || !names->count())
        return nullptr;
    const auto* const language = static_cast<NSString*>(names->allKeys()->objectAtIndex(0));
    return static_cast<NSString*>(names->objectForKey(language))->retain()->autorelease();
}

CGDirectDisplayID* VX_GLScreenManager::searchDisplayIDByLocalDeviceName(NSString* name) {
    for (std::int32_t index = 0; CGDirectDisplayID* const display = queryActiveDisplay(index); ++index) {
        const NSString* const own = screenNameForDisplay(*display);
        if (!own || own->isEqualToString(name))
            return display;
    }
    return nullptr;
}

CGRect VX_GLScreenManager::bounds(std::int32_t index) {
    return isListed(index) ? CGDisplayBounds(m_DirectDisplayIDs[index]) : CGRect();
}

CGSize VX_GLScreenManager::pixelWidthHeightByIndex(std::int32_t index) {
    if (!isListed(index))
        return {};
    const CGDirectDisplayID display = m_DirectDisplayIDs[index];
    return {static_cast<double>(CGDisplayPixelsWide(display)),
            static_cast<double>(CGDisplayPixelsHigh(display))};
}

unsigned VX_GLScreenManager::searchDisplayIDFromWindow(NSWindow* window) {
    NSScreen* const screen = window ? window->screen() : nullptr;
    if (!screen)
        return 0;
    auto* const number = static_cast<NSNumber*>(screen->deviceDescription()->objectForKey("NSScreenNumber"));
    return static_cast<unsigned>(number->intValue());
}

bool VX_GLScreenManager::searchDisplayIDFromPoint(CGPoint point, CGDirectDisplayID* result) {
    CGDirectDisplayID found[kMostDisplays] = {};
    CGDisplayCount count = 0;
    *result = 0;
    if (CGGetDisplaysWithPoint(point, kMostDisplays, found, &count) != kCGErrorSuccess || count == 0)
        return false;
    *result = found[0];
    return true;
}

bool VX_GLScreenManager::searchDisplayIDFromRect(CGRect rect, CGDirectDisplayID* result) {
    return searchDisplayIDFromPoint(
        {rect.origin.x + rect.size.width * 0.5, rect.origin.y + rect.size.height * 0.5}, result);
}

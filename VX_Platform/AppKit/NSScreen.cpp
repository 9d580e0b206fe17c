// SPDX-License-Identifier: MIT
#include <VX_Platform/AppKit/NSScreen.h>

#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/AppKit/private/ScreenInternals.h>
#include <VX_Platform/Foundation/NSMutableArray.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSNumber.h>
#include <VX_Platform/Foundation/NSString.h>

NSMutableArray* NSScreen::screens() {
    NSMutableArray* const screens = (new NSMutableArray)->init()->autorelease();
    for (const vx::DisplayInfo& display : vx::presentDisplays())
        screens->addObject(Internals::screenOf(display));
    return screens;
}

NSScreen* NSScreen::mainScreen() {
    NSMutableArray* const present = screens();
    return present->count() ? static_cast<NSScreen*>(present->objectAtIndex(0)) : nullptr;
}

NSScreen* NSScreen::Internals::screenOf(const vx::DisplayInfo& display) {
    auto* const screen = new NSScreen;
    screen->m_Id = display.id;
    screen->m_Output = display.output;
    screen->m_Name = display.name;
    screen->m_Frame = display.bounds;
    screen->m_RefreshRate = display.refreshRate;
    return screen->autorelease();
}

NSString* NSScreen::localizedName() const {
    return NSString::stringWithUTF8String(m_Name.c_str());
}

NSMutableDictionary* NSScreen::deviceDescription() const {
    NSMutableDictionary* const description = NSMutableDictionary::dictionary();
    description->setObject(NSNumber::numberWithInt(static_cast<int>(m_Id)), "NSScreenNumber");
    return description;
}

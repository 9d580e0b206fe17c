// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGDirectDisplay.h>
#include <VX_Platform/Foundation/NSObject.h>

#include <string>

class NSMutableArray;
class NSMutableDictionary;

/// A display as it was when it was asked for. Any thread; no context needed, no GL calls.
class VX_EXPORT NSScreen : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSScreen)

    /// Returns the displays that are on (`NSScreen`), the primary one first; borrowed, autoreleased. Starts
    /// the platform if need be; empty where there is no display.
    static NSMutableArray* screens();
    /// Returns the primary display, borrowed, autoreleased, or null.
    static NSScreen* mainScreen();

    /// Returns where it lies on the desktop, in pixels: what a window's frame is to be that fills it.
    CGRect frame() const { return m_Frame; }
    /// Returns its refreshes per second, as the window system announces them.
    double refreshRate() const { return m_RefreshRate; }
    /// Returns its name, as `IODisplayCreateInfoDictionary` has it; borrowed, autoreleased.
    NSString* localizedName() const;
    /// Returns a dictionary with its `CGDirectDisplayID` under "NSScreenNumber" (`NSNumber`); borrowed,
    /// autoreleased.
    NSMutableDictionary* deviceDescription() const;

    /// The library's own side of a screen.
    struct VX_HIDDEN Internals;

protected:
    ~NSScreen() override = default;

private:
    CGDirectDisplayID m_Id = 0;
    std::string m_Output;
    std::string m_Name;
    CGRect m_Frame;
    double m_RefreshRate = 0.0;
};

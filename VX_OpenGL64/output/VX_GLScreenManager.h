// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGDirectDisplay.h>
#include <VX_Platform/Foundation/NSObject.h>

class NSWindow;

/// The displays of the machine as of the last query, and the finding of one by name, window or place. Host's
/// thread; no context needed, no GL calls. Names, bounds and places are asked afresh at each call, against a
/// table that is not: of a display that went off meanwhile the identifier stays in it.
class VX_EXPORT VX_GLScreenManager : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(VX_GLScreenManager)

    /// Queries the displays and returns the manager.
    VX_GLScreenManager* init() override;

    /// Lists the displays that are on now, the primary one first, ten at most, and returns how many these
    /// are. Pointers that were returned before point into the new table.
    std::int32_t queryActiveDisplays();
    /// Returns the identifier at `index`, borrowed and valid as long as the manager; null for an index
    /// outside the table.
    CGDirectDisplayID* queryActiveDisplay(std::int32_t index);
    /// Returns the name that the display tells of itself, else that of its output; borrowed, autoreleased.
    /// Null for a display that is off or gone.
    NSString* screenNameForDisplay(CGDirectDisplayID display);
    /// Returns the first display of the table with exactly that name, borrowed as above, or null. A display
    /// that has no name, since it went off, matches every one: ask `screenNameForDisplay` where that matters.
    CGDirectDisplayID* searchDisplayIDByLocalDeviceName(NSString* name);
    /// Returns where the display at `index` lies on the desktop, in pixels; zeros for an index outside the
    /// table.
    CGRect bounds(std::int32_t index);
    /// Returns its width and height in pixels; zeros for an index outside the table.
    CGSize pixelWidthHeightByIndex(std::int32_t index);
    /// Returns the display that shows most of the window's frame, listed or not, whether the window is shown
    /// or not; 0 for a window that lies on none, and for null.
    unsigned searchDisplayIDFromWindow(NSWindow* window);
    /// Puts the display under the point, in pixels from the top left of the desktop, into `result`, listed or
    /// not. False, and 0 there, where no display is.
    bool searchDisplayIDFromPoint(CGPoint point, CGDirectDisplayID* result);
    /// The same for the centre of `rect`; the rest of it plays no part.
    bool searchDisplayIDFromRect(CGRect rect, CGDirectDisplayID* result);

protected:
    ~VX_GLScreenManager() override = default;

private:
    bool isListed(std::int32_t index) const;

    CGDirectDisplayID m_DirectDisplayIDs[16] = {};
    CGDisplayCount m_DirectDisplayIDCount = 0;
};

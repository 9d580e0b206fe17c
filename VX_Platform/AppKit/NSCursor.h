// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// The pointer over the process's windows, but for those of other toolkits. Main thread.
class VX_EXPORT NSCursor : public NSObject {
public:
    /// Hides the pointer until `unhide` has been called as often. Starts the platform if need be; nothing is
    /// seen of it on the headless one.
    static void hide();
    /// Takes one `hide` back; harmless without one.
    static void unhide();
};

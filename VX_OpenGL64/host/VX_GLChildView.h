// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

class VX_GLMainView;

/// All that a main view knows of a child view. Any `NSObject` that has these operations can be added to it.
class VX_EXPORT VX_GLChildView {
public:
    /// Makes the child's shared context. On the host's thread, from the owner's `prepareOpenGL` or
    /// `initChildShardedViews`.
    virtual void initialization(VX_GLMainView* owner) = 0;
    /// Draws and flushes one frame of the child. On the display link's thread, with the owner's render lock
    /// held.
    virtual void callBackRender() = 0;
    /// Gives the child's context up. On the host's thread, from the owner's `releaseResources`.
    virtual void releaseResources() = 0;

protected:
    ~VX_GLChildView() = default;
};

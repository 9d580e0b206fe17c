// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// How the calling thread draws.
class VX_EXPORT NSGraphicsContext : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSGraphicsContext)

    /// Returns the calling thread's, borrowed; never null. It always stands for the focus at the time of a
    /// call, and without a focus its calls do nothing.
    static NSGraphicsContext* currentContext();

    /// Whether the paths of the focused image get smooth edges, as they do at first; text is smooth always.
    void setShouldAntialias(bool antialias);

protected:
    ~NSGraphicsContext() override;
};

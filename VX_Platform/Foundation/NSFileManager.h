// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// Questions about the file system. Any thread.
class VX_EXPORT NSFileManager : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSFileManager)

    /// The process's manager; borrowed, never ends.
    static NSFileManager* defaultManager();

    /// True when anything exists at the path, links followed; false for null.
    bool fileExistsAtPath(const NSString* path) const;
};

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSObject.h>

/// Questions about the file system. Any thread.
class VX_EXPORT NSFileManager : public NSObject {
public:
    VX_RETURNS_OWN_TYPE(NSFileManager)

    /// Returns the process's manager; borrowed, never ends. Any thread.
    static NSFileManager* defaultManager();

    /// `path` in the file system's bytes, from the working directory when it does not begin with a slash.
    /// Returns whether anything is there, a folder too, links followed; false for null and where a folder on
    /// the way cannot be searched. Any thread.
    bool fileExistsAtPath(const NSString* path) const;

protected:
    ~NSFileManager() override = default;
};

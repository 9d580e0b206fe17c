// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSFileManager.h>

#include <VX_Platform/Foundation/NSString.h>

#include <filesystem>

NSFileManager* NSFileManager::defaultManager() {
    static NSFileManager* manager = new NSFileManager;
    return manager;
}

bool NSFileManager::fileExistsAtPath(const NSString* path) const {
    std::error_code failed;
    return path && std::filesystem::exists(path->string(), failed);
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/backends/Platform.h>

std::unique_ptr<vx::Platform> vx::makeX11Platform() {
    NSLog("The x11 platform is not built yet; choose the headless one (NSApplication::useHeadlessPlatform)");
    return nullptr;
}

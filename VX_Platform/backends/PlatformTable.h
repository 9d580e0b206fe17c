// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/VX_Libraries.h>
#include <VX_Platform/backends/Platform.h>

#include <span>

namespace vx {

/// What a host may ask of the headless platform.
struct HeadlessOptions {
    /// Index among EGL's devices; negative for the first that gives a desktop GL context.
    int device = -1;
    CGSize displaySize = {1920.0, 1080.0};
    double refreshRate = 60.0;
};

/// One platform that can be chosen by its name.
struct PlatformRow {
    const char* name;
    /// Why it would do where the host names none, in words for the log; empty where it would not.
    std::string (*presence)();
    /// Null, with one line in the log, when it cannot start.
    std::unique_ptr<Platform> (*start)(PlatformEvents& events, const HeadlessOptions& headless);
    /// `Platform::presentAlert`, which needs no started platform.
    int (*presentAlert)(const AlertContents& contents);
    /// What its windows are made by; null for none.
    VX_Library (*library)();
};

/// All of them, in the order in which they are tried where the host names none.
std::span<const PlatformRow> platformTable();
/// The row of that name, or null.
const PlatformRow* platformNamed(const std::string& name);
/// The first row that would do here, or null.
const PlatformRow* platformPresent();

} // namespace vx

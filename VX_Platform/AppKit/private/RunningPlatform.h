// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/PlatformTable.h>

#include <memory>
#include <vector>

namespace vx {

/// The platform that the process runs on, started on the first call; null, with one line in the log, when it
/// cannot start. Who needs it in every frame keeps what this returns. Any thread.
std::shared_ptr<Platform> runningPlatform();
/// The same without starting one.
std::shared_ptr<Platform> startedPlatform();
/// The displays of the running platform, the primary one first; none without a platform. Any thread.
std::vector<DisplayInfo> presentDisplays();

/// Chooses what `runningPlatform` starts. False, with a line in the log, for a name that is not in the table
/// and while another platform runs.
bool choosePlatform(const char* name, const HeadlessOptions& headless);
/// Whether the host has chosen that platform, or it runs.
bool isPlatformChosen(const char* name);

/// Lets the platform go; it ends with its last context, window or view.
void endPlatform();
/// For a test: puts a platform of its own in place of the running one, or none.
void replacePlatform(std::shared_ptr<Platform> platform);

/// `Platform::presentAlert` of the platform that runs or would be started. Any thread.
int presentAlert(const AlertContents& contents);

} // namespace vx

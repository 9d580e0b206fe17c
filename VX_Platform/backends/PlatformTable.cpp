// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/PlatformTable.h>

#include <VX_Platform/backends/headless/HeadlessPlatform.h>
#include <VX_Platform/backends/x11/X11Platform.h>

#include <algorithm>

namespace vx {

namespace {

// Chosen by the host's call and never fallen into: a silent fallback would hide a broken installation.
std::string onlyByName() {
    return {};
}

const PlatformRow kTable[] = {
    {"x11", x11Presence, startX11Platform, presentX11Alert, x11Library},
    {"headless", onlyByName, startHeadlessPlatform, logAlert, nullptr},
};

} // namespace

std::span<const PlatformRow> platformTable() {
    return kTable;
}

const PlatformRow* platformNamed(const std::string& name) {
    const auto row = std::ranges::find_if(kTable, [&](const PlatformRow& row) { return row.name == name; });
    return row == std::end(kTable) ? nullptr : row;
}

const PlatformRow* platformPresent() {
    const auto row =
        std::ranges::find_if(kTable, [](const PlatformRow& row) { return !row.presence().empty(); });
    return row == std::end(kTable) ? nullptr : row;
}

} // namespace vx

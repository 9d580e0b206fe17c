// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/CGDirectDisplay.h>

#include <VX_Platform/AppKit/private/RunningPlatform.h>
#include <VX_Platform/Foundation/NSMutableDictionary.h>
#include <VX_Platform/Foundation/NSString.h>

#include <algorithm>
#include <optional>

namespace {

std::optional<vx::DisplayInfo> displayOf(CGDirectDisplayID id) {
    const std::vector<vx::DisplayInfo> present = vx::presentDisplays();
    const auto found = std::ranges::find(present, id, &vx::DisplayInfo::id);
    return found == present.end() ? std::nullopt : std::optional(*found);
}

CGError list(const std::vector<vx::DisplayInfo>& found, std::uint32_t capacity, CGDirectDisplayID* displays,
             CGDisplayCount* count) {
    if (!count)
        return kCGErrorIllegalArgument;
    *count = static_cast<CGDisplayCount>(found.size());
    if (!displays)
        return kCGErrorSuccess;
    *count = std::min(capacity, *count);
    for (CGDisplayCount i = 0; i < *count; ++i)
        displays[i] = found[i].id;
    return kCGErrorSuccess;
}

} // namespace

CGError CGGetActiveDisplayList(std::uint32_t capacity, CGDirectDisplayID* displays, CGDisplayCount* count) {
    return list(vx::presentDisplays(), capacity, displays, count);
}

CGError CGGetDisplaysWithPoint(CGPoint point, std::uint32_t capacity, CGDirectDisplayID* displays,
                               CGDisplayCount* count) {
    std::vector<vx::DisplayInfo> found = vx::presentDisplays();
    std::erase_if(found, [point](const vx::DisplayInfo& display) {
        const auto [origin, size] = display.bounds;
        return !(point.x >= origin.x && point.x < origin.x + size.width && point.y >= origin.y &&
                 point.y < origin.y + size.height);
    });
    return list(found, capacity, displays, count);
}

CGRect CGDisplayBounds(CGDirectDisplayID display) {
    const std::optional<vx::DisplayInfo> found = displayOf(display);
    return found ? found->bounds : CGRect();
}

std::size_t CGDisplayPixelsWide(CGDirectDisplayID display) {
    return static_cast<std::size_t>(CGDisplayBounds(display).size.width);
}

std::size_t CGDisplayPixelsHigh(CGDirectDisplayID display) {
    return static_cast<std::size_t>(CGDisplayBounds(display).size.height);
}

io_service_t CGDisplayIOServicePort(CGDirectDisplayID display) {
    return display;
}

NSMutableDictionary* IODisplayCreateInfoDictionary(io_service_t display, std::uint32_t) {
    const auto names = NSInit(new NSMutableDictionary);
    const std::optional<vx::DisplayInfo> found = displayOf(display);
    // Null where the window system's name is no text.
    NSString* const name = found ? NSString::stringWithUTF8String(found->name.c_str()) : nullptr;
    if (name)
        names->setObject(name, "en_US");
    auto* const info = (new NSMutableDictionary)->init();
    info->setObject(names.get(), "DisplayProductName");
    return info;
}

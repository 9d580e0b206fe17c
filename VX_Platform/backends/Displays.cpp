// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/Displays.h>

#include <algorithm>
#include <map>
#include <mutex>

namespace vx {

namespace {

double overlap(const CGRect& a, const CGRect& b) {
    const double width =
        std::min(a.origin.x + a.size.width, b.origin.x + b.size.width) - std::max(a.origin.x, b.origin.x);
    const double height =
        std::min(a.origin.y + a.size.height, b.origin.y + b.size.height) - std::max(a.origin.y, b.origin.y);
    return std::max(width, 0.0) * std::max(height, 0.0);
}

} // namespace

std::uint32_t displayIdOf(const std::string& name) {
    static std::mutex lock;
    static auto* ids = new std::map<std::string, std::uint32_t>;
    std::lock_guard guard(lock);
    return ids->try_emplace(name, static_cast<std::uint32_t>(ids->size() + 1)).first->second;
}

DisplayInfo displayShowing(const std::vector<DisplayInfo>& displays, CGRect frame) {
    const auto most =
        std::max_element(displays.begin(), displays.end(), [&](const DisplayInfo& a, const DisplayInfo& b) {
            return overlap(a.bounds, frame) < overlap(b.bounds, frame);
        });
    return most == displays.end() ? DisplayInfo() : *most;
}

const DisplayInfo* displayNamed(const std::vector<DisplayInfo>& displays, const std::string& name) {
    const auto found = std::ranges::find(displays, name, &DisplayInfo::name);
    return found == displays.end() ? nullptr : &*found;
}

} // namespace vx

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

std::uint32_t displayIdOf(const std::string& output) {
    static std::mutex lock;
    static auto* ids = new std::map<std::string, std::uint32_t>;
    std::lock_guard guard(lock);
    return ids->try_emplace(output, static_cast<std::uint32_t>(ids->size() + 1)).first->second;
}

const DisplayInfo* displayUnder(const std::vector<DisplayInfo>& displays, CGRect frame) {
    const auto most =
        std::max_element(displays.begin(), displays.end(), [&](const DisplayInfo& a, const DisplayInfo& b) {
            return overlap(a.bounds, frame) < overlap(b.bounds, frame);
        });
    return most != displays.end() && overlap(most->bounds, frame) > 0.0 ? &*most : nullptr;
}

DisplayInfo displayShowing(const std::vector<DisplayInfo>& displays, CGRect frame) {
    if (const DisplayInfo* display = displayUnder(displays, frame))
        return *display;
    return displays.empty() ? DisplayInfo() : displays.front();
}

const DisplayInfo* displayNamed(const std::vector<DisplayInfo>& displays, const std::string& name) {
    auto found = std::ranges::find(displays, name, &DisplayInfo::name);
    if (found == displays.end())
        found = std::ranges::find(displays, name, &DisplayInfo::output);
    return found == displays.end() ? nullptr : &*found;
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/backends/headless/HeadlessDesktop.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <algorithm>
#include <utility>

namespace vx {

bool HeadlessDesktop::plug(const std::string& name, CGRect bounds, double refreshRate) {
    if (name.empty() || !(bounds.size.width >= 1.0) || !(bounds.size.height >= 1.0) ||
        !isRefreshRate(refreshRate)) {
        NSLog(
            "Headless: display \"%s\" of %g x %g at %g Hz is refused: sizes begin at 1, rates lie between %g "
            "and %g Hz",
            name.c_str(), bounds.size.width, bounds.size.height, refreshRate, kSlowestRefresh,
            kFastestRefresh);
        return false;
    }
    {
        std::lock_guard guard(m_Lock);
        const DisplayInfo display{displayIdOf(name), name, name, bounds, refreshRate};
        const auto known = std::ranges::find(m_Displays, name, &DisplayInfo::name);
        if (known != m_Displays.end())
            *known = display;
        else
            m_Displays.push_back(display);
    }
    m_Events.displaysChanged();
    return true;
}

bool HeadlessDesktop::unplug(const std::string& name) {
    {
        std::lock_guard guard(m_Lock);
        const auto known = std::ranges::find(m_Displays, name, &DisplayInfo::name);
        if (known == m_Displays.end())
            return false;
        m_Displays.erase(known);
    }
    m_Events.displaysChanged();
    return true;
}

std::vector<DisplayInfo> HeadlessDesktop::displays() const {
    std::lock_guard guard(m_Lock);
    return m_Displays;
}

DisplayInfo HeadlessDesktop::displayOf(const WindowBackend* window) const {
    std::lock_guard guard(m_Lock);
    const Entry* entry = entryOf(window);
    return displayShowing(m_Displays, entry ? entry->frame : CGRect());
}

HeadlessDesktop::Entry* HeadlessDesktop::entryOf(const WindowBackend* window) {
    const auto entry = std::ranges::find(m_Windows, window, &Entry::window);
    return entry == m_Windows.end() ? nullptr : &*entry;
}

const HeadlessDesktop::Entry* HeadlessDesktop::entryOf(const WindowBackend* window) const {
    return const_cast<HeadlessDesktop*>(this)->entryOf(window);
}

void HeadlessDesktop::add(HeadlessWindow* window, CGRect frame) {
    std::lock_guard guard(m_Lock);
    m_Windows.insert(m_Windows.begin(), {window, frame, false});
}

void HeadlessDesktop::remove(HeadlessWindow* window) {
    HeadlessWindow* next = nullptr;
    {
        std::lock_guard guard(m_Lock);
        std::erase_if(m_Windows, [window](const Entry& entry) { return entry.window == window; });
        if (m_Key != window)
            return;
        // Its owner is about to go and hears nothing of it any more.
        m_Key = nullptr;
        next = frontmost();
    }
    moveKeyTo(next);
}

void HeadlessDesktop::move(HeadlessWindow* window, CGRect frame) {
    {
        std::lock_guard guard(m_Lock);
        entryOf(window)->frame = frame;
    }
    m_Events.frameChanged(*window, frame);
}

CGRect HeadlessDesktop::frameOf(const HeadlessWindow* window) const {
    std::lock_guard guard(m_Lock);
    return entryOf(window)->frame;
}

void HeadlessDesktop::raise(HeadlessWindow* window, bool withKeyboard) {
    {
        std::lock_guard guard(m_Lock);
        entryOf(window)->shown = true;
        std::stable_partition(m_Windows.begin(), m_Windows.end(),
                              [window](const Entry& entry) { return entry.window != window; });
    }
    if (withKeyboard)
        moveKeyTo(window);
}

void HeadlessDesktop::lower(HeadlessWindow* window) {
    HeadlessWindow* next = nullptr;
    {
        std::lock_guard guard(m_Lock);
        entryOf(window)->shown = false;
        if (m_Key != window)
            return;
        next = frontmost();
    }
    moveKeyTo(next);
}

HeadlessWindow* HeadlessDesktop::frontmost() const {
    const auto front =
        std::find_if(m_Windows.rbegin(), m_Windows.rend(), [](const Entry& entry) { return entry.shown; });
    return front == m_Windows.rend() ? nullptr : front->window;
}

// One window is key at a time, and the one that loses the keyboard hears of it first.
void HeadlessDesktop::moveKeyTo(HeadlessWindow* window) {
    HeadlessWindow* former = std::exchange(m_Key, window);
    if (former == window)
        return;
    if (former)
        m_Events.focusChanged(*former, false);
    if (window && m_Key == window)
        m_Events.focusChanged(*window, true);
}

HeadlessWindow::HeadlessWindow(std::shared_ptr<HeadlessDesktop> desktop, CGRect frame)
    : m_Desktop(std::move(desktop)) {
    m_Desktop->add(this, frame);
}

HeadlessWindow::~HeadlessWindow() {
    m_Desktop->remove(this);
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/SurfaceSlot.h>

#include <utility>

namespace vx {

void SurfaceSlot::set(std::shared_ptr<Surface> surface) {
    const DisplayInfo display = surface ? surface->display() : DisplayInfo();
    std::lock_guard guard(m_Lock);
    m_Surface.swap(surface);
    m_Display = display;
    ++m_Generation;
}

void SurfaceSlot::noteDisplay() {
    // The window system is asked with no lock held, since a frame may want the surface meanwhile.
    const std::shared_ptr<Surface> surface = this->surface();
    if (!surface)
        return;
    const DisplayInfo display = surface->display();
    std::lock_guard guard(m_Lock);
    if (surface != m_Surface || (display.id == m_Display.id && display.refreshRate == m_Display.refreshRate))
        return;
    m_Display = display;
    ++m_Generation;
}

bool SurfaceSlot::isNews(double period, const char* throttle) {
    std::lock_guard guard(m_Lock);
    if (std::exchange(m_ToldPeriod, period) == period && m_ToldThrottle == throttle)
        return false;
    m_ToldThrottle = throttle;
    return true;
}

std::shared_ptr<Surface> SurfaceSlot::surface() const {
    std::lock_guard guard(m_Lock);
    return m_Surface;
}

SurfaceSlot::Place SurfaceSlot::place() const {
    std::lock_guard guard(m_Lock);
    return {m_Surface, m_Display, m_Generation.load(std::memory_order_relaxed)};
}

} // namespace vx

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/backends/Platform.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>

namespace vx {

/// Where the frames of a context go now, for those who follow it from other threads: the display link above
/// all. Any thread.
class SurfaceSlot {
public:
    struct Place {
        /// Null where the context draws to nothing.
        std::shared_ptr<Surface> surface;
        DisplayInfo display;
        unsigned generation = 0;
    };

    void set(std::shared_ptr<Surface> surface);
    /// Looks whether the surface is on another display now, or its display has another rate.
    void noteDisplay();

    std::shared_ptr<Surface> surface() const;
    Place place() const;
    /// Changes with each new surface, display or rate. One atomic load.
    unsigned generation() const { return m_Generation.load(std::memory_order_acquire); }
    /// Whether the pace of those who follow is another than when it was last asked.
    bool isNews(double period, const char* throttle);

private:
    mutable std::mutex m_Lock;
    std::shared_ptr<Surface> m_Surface;
    DisplayInfo m_Display;
    double m_ToldPeriod = 0.0;
    std::string m_ToldThrottle;
    std::atomic<unsigned> m_Generation{1};
};

} // namespace vx

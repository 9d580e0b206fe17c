// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/CoreGraphics/CGGeometry.h>

#include <atomic>

namespace vx {

/// The size of a view's bounds as its hooks get it.
inline void sampleSize(CGRect bounds, std::atomic<float>& width, std::atomic<float>& height) {
    const auto [origin, size] = bounds;
    width = static_cast<float>(origin.x + size.width) - static_cast<float>(origin.x);
    height = static_cast<float>(origin.y + size.height) - static_cast<float>(origin.y);
}

inline void takeSize(CGSize size, std::atomic<float>& width, std::atomic<float>& height) {
    width = static_cast<float>(size.width);
    height = static_cast<float>(size.height);
}

} // namespace vx

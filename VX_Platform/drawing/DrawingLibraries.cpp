// SPDX-License-Identifier: MIT
#include <VX_Platform/drawing/DrawingLibraries.h>

#include <cairo.h>
#include <fontconfig/fontconfig.h>
#include <pango/pangocairo.h>

namespace vx {

namespace {

// 21401 is 2.14.1.
std::string fontconfigVersion() {
    const int version = FcGetVersion();
    return std::to_string(version / 10000) + "." + std::to_string(version / 100 % 100) + "." +
           std::to_string(version % 100);
}

} // namespace

std::vector<VX_Library> drawingLibraries() {
    return {{"drawing", "cairo", cairo_version_string()},
            {"text", "pango", pango_version_string()},
            {"fonts", "fontconfig", fontconfigVersion()}};
}

} // namespace vx

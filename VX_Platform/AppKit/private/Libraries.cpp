// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/VX_Libraries.h>

#include <VX_Platform/backends/PlatformTable.h>
#include <VX_Platform/drawing/DrawingLibraries.h>

std::vector<VX_Library> VX_GetLibraries() {
    std::vector<VX_Library> libraries;
    for (const vx::PlatformRow& row : vx::platformTable())
        if (row.library)
            libraries.push_back(row.library());
    for (VX_Library& library : vx::drawingLibraries())
        libraries.push_back(std::move(library));
    return libraries;
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/VX_Diagnostics.h>

#include <atomic>

namespace {

std::atomic<bool> diagnostics{false};

} // namespace

void VX_SetDiagnostics(bool on) {
    diagnostics = on;
}

bool VX_GetDiagnostics() {
    return diagnostics;
}

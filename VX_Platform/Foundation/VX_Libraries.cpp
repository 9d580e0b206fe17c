// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/VX_Libraries.h>

const char* VX_GetVersion() {
    return VX_LIBRARY_VERSION;
}

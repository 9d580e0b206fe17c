// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOIndex.h>

VX_GLVBOIndex::~VX_GLVBOIndex() {
    end("VX_GLVBOIndex");
}

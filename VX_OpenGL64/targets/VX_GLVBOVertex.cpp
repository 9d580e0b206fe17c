// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/targets/VX_GLVBOVertex.h>

VX_GLVBOVertex::~VX_GLVBOVertex() {
    end("VX_GLVBOVertex");
}

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/targets/VX_GLVBOTarget.h>

/// Buffer object for vertex data: the operations of `VX_GLVBOBase` on GL_ARRAY_BUFFER.
class VX_EXPORT VX_GLVBOVertex : public VX_GLVBOTarget<0x8892> {
public:
    ~VX_GLVBOVertex() override;
};

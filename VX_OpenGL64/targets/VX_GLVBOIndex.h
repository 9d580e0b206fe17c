// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/targets/VX_GLVBOTarget.h>

/// Buffer object for index data: the operations of `VX_GLVBOBase` on GL_ELEMENT_ARRAY_BUFFER.
class VX_EXPORT VX_GLVBOIndex : public VX_GLVBOTarget<0x8893> {
public:
    ~VX_GLVBOIndex() override;
};

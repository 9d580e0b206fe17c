// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/targets/VX_GLVBOBase.h>

/// Buffer object for index data: the operations of `VX_GLVBOBase` on GL_ELEMENT_ARRAY_BUFFER.
class VX_EXPORT VX_GLVBOIndex : public VX_GLVBOBase {
public:
    ~VX_GLVBOIndex() override;

    void BindBuffer() override;
    void UnBindBuffer() override;
    void Allocate(int size, unsigned int usage, void* data) override;
    void Copy(int offset, int size, void* data) override;
    void* Lock(unsigned int access) override;
    bool Unlock() override;
};

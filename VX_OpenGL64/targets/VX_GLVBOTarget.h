// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/targets/VX_GLVBOBase.h>

/// The operations of `VX_GLVBOBase` on the GL target of that enumerant. There are two: GL_ARRAY_BUFFER under
/// `VX_GLVBOVertex` and GL_ELEMENT_ARRAY_BUFFER under `VX_GLVBOIndex`.
template <unsigned int target>
class VX_EXPORT VX_GLVBOTarget : public VX_GLVBOBase {
public:
    /// As `VX_GLVBOBase` tells of the operation of that name.
    void BindBuffer() override;
    void UnBindBuffer() override;
    void Allocate(int size, unsigned int usage, void* data) override;
    void Copy(int offset, int size, void* data) override;
    void* Lock(unsigned int access) override;
    bool Unlock() override;
};

extern template class VX_GLVBOTarget<0x8892>;
extern template class VX_GLVBOTarget<0x8893>;

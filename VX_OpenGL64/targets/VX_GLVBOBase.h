// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// Abstract GL buffer object, so that vertex and index buffers are treated alike. Owns the GL name and keeps
/// the size last asked for.
///
/// Everything, constructor and destructor included, needs a GL 1.5 context current on the calling thread.
/// `Allocate`, `Copy`, `Lock` and `Unlock` work on the buffer that is bound to the class's target: call
/// `BindBuffer` before and `UnBindBuffer` after them. Nothing is checked or reported.
class VX_EXPORT VX_GLVBOBase {
public:
    /// A buffer without storage. GL: glGenBuffers.
    VX_GLVBOBase();
    /// GL: glDeleteBuffers.
    virtual ~VX_GLVBOBase();
    VX_GLVBOBase(const VX_GLVBOBase&) = delete;
    VX_GLVBOBase& operator=(const VX_GLVBOBase&) = delete;

    /// GL: glBindBuffer; the buffer stays bound.
    virtual void BindBuffer() = 0;
    /// Unbinds the target, whichever buffer is bound. GL: glBindBuffer with 0.
    virtual void UnBindBuffer() = 0;
    /// Gives the bound buffer new storage of `size` bytes, filled from `data` or left undefined when that is
    /// null; `data` is borrowed for the call. `usage` is a GL hint such as GL_STATIC_DRAW. `m_Size` becomes
    /// `size` whether or not GL succeeds. GL: glBufferData.
    virtual void Allocate(int size, unsigned int usage, void* data) = 0;
    /// Overwrites `size` bytes from `offset`; `data` is borrowed for the call. GL: glBufferSubData.
    virtual void Copy(int offset, int size, void* data) = 0;
    /// Maps the storage for an access such as GL_WRITE_ONLY; valid until `Unlock`, null on failure.
    /// GL: glMapBuffer.
    virtual void* Lock(unsigned int access) = 0;
    /// False when the storage was lost while it was mapped. GL: glUnmapBuffer.
    virtual bool Unlock() = 0;

    /// GL name, owned.
    unsigned int m_Buffer = 0;
    /// Bytes asked for by the last `Allocate`.
    int m_Size = 0;

protected:
    /// For the destructor of a subclass, which the log names where no context is current.
    void end(const char* className);
};

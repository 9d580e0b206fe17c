// SPDX-License-Identifier: MIT
#pragma once

#include <VX_OpenGL64/textures/files/private/TextureCanvas.h>

#include <cstddef>

namespace vx {

/// Where GL finds rows under the state in force.
UnpackLayout currentUnpackLayout();
/// What GL has to be given to find the first row at `pixels`, be it told to skip rows or pixels.
const void* unpackedFrom(const void* pixels, std::size_t rowBytes, std::size_t bytesPerPixel);
/// The other way: where GL finds the first row of what it is given.
const void* skippedInto(const void* given, std::size_t rowBytes, std::size_t bytesPerPixel);

/// glPixelStorei of GL_UNPACK_CLIENT_STORAGE_APPLE, and glTexParameteri that asks for cached storage, where
/// there is such a thing.
void setClientStorage(int value);
void askForCachedStorage(unsigned target);

/// Brings client storage, row length and alignment back at its end.
class KeptUnpackState {
public:
    KeptUnpackState();
    ~KeptUnpackState();
    KeptUnpackState(const KeptUnpackState&) = delete;
    KeptUnpackState& operator=(const KeptUnpackState&) = delete;

private:
    int m_Alignment = 4;
    int m_RowLength = 0;
    int m_ClientStorage = 0;
};

} // namespace vx

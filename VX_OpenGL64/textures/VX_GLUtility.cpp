// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/textures/VX_GLUtility.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

#include <cstdint>
#include <initializer_list>

int VX_GLUtility_NextHighestPowerOf2FromInt(int value) {
    std::uint32_t bits = static_cast<std::uint32_t>(value) - 1;
    for (const int shift : {1, 2, 4, 8, 16})
        bits |= static_cast<std::uint32_t>(static_cast<std::int32_t>(bits) >> shift);
    return static_cast<int>(bits + 1);
}

void VX_GLUtility_FreeTexture(unsigned int& texture) {
    if (!texture || !vx::mayDelete("VX_GLUtility_FreeTexture", texture))
        return;
    glDeleteTextures(1, &texture);
    texture = 0;
}

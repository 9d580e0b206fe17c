// SPDX-License-Identifier: MIT
#pragma once

#include <glm/glm.hpp>

// GLM macros that change the size or alignment of its types would break this library's binary interface
// without a word from compiler or linker.
static_assert(sizeof(glm::tvec2<float>) == 8 && alignof(glm::tvec2<float>) == 4 &&
                  sizeof(glm::tvec3<float>) == 12 && alignof(glm::tvec3<float>) == 4 &&
                  sizeof(glm::tvec4<float>) == 16 && alignof(glm::tvec4<float>) == 4 &&
                  sizeof(glm::tmat4x4<float>) == 64,
              "VX_OpenGL64 needs GLM's packed, unaligned types: undefine GLM_FORCE_DEFAULT_ALIGNED_GENTYPES "
              "and GLM_FORCE_ALIGNED_GENTYPES");

// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

namespace vx {

/// What the driver behind a share group can and cannot do, where the toolkit has to know. Read once for each
/// share group; a test may switch an entry to walk the other road.
struct GLCapabilities {
    /// `GL_EXT_clip_volume_hint`. Without it the hint leaves GL_INVALID_ENUM behind, which the next texture
    /// load would take for its own error.
    bool clipVolumeHint = false;
    /// `GL_EXT_geometry_shader4`: the dialect and `glProgramParameteriEXT`. Mesa has neither.
    bool geometryShader4 = false;
    /// That extension or OpenGL 3.2, of whose GLSL 1.50 geometry shaders are a part. Without either the
    /// shader's type and the question for its limits are GL_INVALID_ENUM.
    bool geometryShaders = false;
    /// OpenGL 3.3. In GLSL older than that Mesa's preprocessor, and not its compiler, counts lines behind
    /// `#line` one short.
    bool glsl330 = false;
    /// `GL_APPLE_client_storage`. Without it GL_UNPACK_CLIENT_STORAGE_APPLE leaves GL_INVALID_ENUM behind,
    /// and GL copies a texture's pixels at once.
    bool clientStorage = false;
    /// `GL_APPLE_texture_range`, with GL_TEXTURE_STORAGE_HINT_APPLE; the same symptom.
    bool textureRange = false;
    /// OpenGL 4.4, whose `glBindTextures` finds out what kind of texture a name is. Without it that is found
    /// by trial, and a GL error of the host's that was not read is lost with it.
    bool bindTextures = false;
    /// Framebuffers bound for reading and for drawing apart: `GL_EXT_framebuffer_blit`, alone or as a part of
    /// `GL_ARB_framebuffer_object`. Without it asking for the one that is read leaves GL_INVALID_ENUM behind.
    bool framebufferBlit = false;
    /// `GL_EXT_framebuffer_multisample`, alone or as a part of `GL_ARB_framebuffer_object`. Without it asking
    /// for GL_MAX_SAMPLES_EXT leaves GL_INVALID_ENUM behind.
    bool framebufferMultisample = false;
    /// Fences: OpenGL 3.2 or `GL_ARB_sync`. Without them only waiting tells whether pixels have arrived.
    bool sync = false;
};

/// The record of the calling thread's current context, also of one that the host made by other means. Without
/// a current context nothing is claimed to be there.
VX_EXPORT GLCapabilities& currentGLCapabilities();

} // namespace vx

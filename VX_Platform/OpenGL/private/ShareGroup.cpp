// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/ShareGroup.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <epoxy/gl.h>

vx::GLCapabilities vx::readGLCapabilities() {
    // glutExtensionSupported ends the process unless a GLUT window exists, so libepoxy is asked.
    GLCapabilities found;
    found.clipVolumeHint = epoxy_has_gl_extension("GL_EXT_clip_volume_hint");
    found.geometryShader4 = epoxy_has_gl_extension("GL_EXT_geometry_shader4");
    found.geometryShaders = found.geometryShader4 || epoxy_gl_version() >= 32;
    found.glsl330 = epoxy_gl_version() >= 33;
    found.clientStorage = epoxy_has_gl_extension("GL_APPLE_client_storage");
    found.textureRange = epoxy_has_gl_extension("GL_APPLE_texture_range");
    found.bindTextures = epoxy_gl_version() >= 44;
    const bool framebufferObject = epoxy_has_gl_extension("GL_ARB_framebuffer_object");
    found.framebufferBlit = framebufferObject || epoxy_has_gl_extension("GL_EXT_framebuffer_blit");
    found.framebufferMultisample =
        framebufferObject || epoxy_has_gl_extension("GL_EXT_framebuffer_multisample");
    found.sync = epoxy_gl_version() >= 32 || epoxy_has_gl_extension("GL_ARB_sync");
    return found;
}

void vx::ShareGroup::noteFirstUse(const GLDriver& driver) {
    std::call_once(m_Once, [&] {
        capabilities = readGLCapabilities();
        NSLog("OpenGL: %s, version %s (%s)", reinterpret_cast<const char*>(glGetString(GL_RENDERER)),
              reinterpret_cast<const char*>(glGetString(GL_VERSION)), driver.description().c_str());
    });
}

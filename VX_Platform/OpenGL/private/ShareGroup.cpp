// SPDX-License-Identifier: MIT
#include <VX_Platform/OpenGL/private/ShareGroup.h>

#include <VX_Platform/Foundation/NSLog.h>
#include <VX_Platform/backends/Platform.h>

#include <epoxy/gl.h>

void vx::ShareGroup::noteFirstUse() {
    std::call_once(m_Once, [this] {
        // glutExtensionSupported ends the process unless a GLUT window exists, so libepoxy is asked.
        capabilities.clipVolumeHint = epoxy_has_gl_extension("GL_EXT_clip_volume_hint");
        capabilities.geometryShader4 = epoxy_has_gl_extension("GL_EXT_geometry_shader4");
        NSLog("OpenGL: %s, version %s (%s)", reinterpret_cast<const char*>(glGetString(GL_RENDERER)),
              reinterpret_cast<const char*>(glGetString(GL_VERSION)),
              Platform::current()->gl().description().c_str());
    });
}

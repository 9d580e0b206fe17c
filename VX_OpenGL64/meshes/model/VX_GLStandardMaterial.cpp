// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/meshes/model/VX_GLStandardMaterial.h>

#include <VX_Platform/OpenGL/private/CurrentContext.h>

#include <epoxy/gl.h>

VX_GLStandardMaterial::VX_GLStandardMaterial() : m_Name(NSRef<NSString>::adopt((new NSString)->init())) {}

VX_GLStandardMaterial::~VX_GLStandardMaterial() {
    for (unsigned int& texture : m_Textures) {
        if (texture != 0 && vx::mayDelete("VX_GLStandardMaterial", texture))
            glDeleteTextures(1, &texture);
        texture = 0;
    }
}

void VX_GLStandardMaterial::SetName(NSString* name) {
    if (name != m_Name.get())
        m_Name = NSRef<NSString>::adopt(name ? name->copy() : nullptr);
}

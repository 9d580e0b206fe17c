// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/NSString.h>

/// One material of a model: a name, values for the host, and up to eight textures that it owns.
class VX_EXPORT VX_GLStandardMaterial {
public:
    VX_GLStandardMaterial();
    /// Deletes each texture whose name is not 0, in order, with `glDeleteTextures`, then gives the name back.
    /// Needs the textures' context current if there is one to delete, and calls no GL if there is none.
    ~VX_GLStandardMaterial();
    VX_GLStandardMaterial(const VX_GLStandardMaterial&) = delete;
    VX_GLStandardMaterial& operator=(const VX_GLStandardMaterial&) = delete;

    /// Keeps a copy of `name`, which stays the caller's; null leaves no name. The object that is the name
    /// already changes nothing.
    void SetName(NSString* name);
    /// The name, borrowed.
    NSString* GetName() const { return m_Name.get(); }

    /// Owned; an empty text at first.
    NSRef<NSString> m_Name;
    /// For the host; nothing here reads these two.
    float m_MaterialValues[16] = {};
    int m_MaterialExtra = 0;
    /// GL texture names, owned; 0 where there is none.
    unsigned int m_Textures[8] = {};
};

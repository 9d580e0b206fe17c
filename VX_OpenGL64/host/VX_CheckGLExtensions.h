// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

/// What a driver can do, as a pipeline's subclass finds it out. The pipeline that it is given to owns it and
/// deletes it through this destructor.
class VX_EXPORT VX_CheckGLExtensions {
public:
    virtual ~VX_CheckGLExtensions() = default;
};

// SPDX-License-Identifier: MIT
#pragma once

namespace vx {

/// Gives the attributes of `program`, which is not linked yet, the locations that they have in `former`.
/// GL: glGetProgramiv, glGetActiveAttrib, glGetAttribLocation, glBindAttribLocation.
void keepAttributeLocations(unsigned int former, unsigned int program);

/// Sets the uniforms of `program` that `former` has too, of the same type, to the values that were set in
/// `former`. Those left at the value that the shader itself gives them are not touched, so that another one
/// in the new text counts. `former`, which is linked anew for that, has its own values back then. The current
/// program stays. GL: glGetActiveUniform, glGetUniform*, glLinkProgram, glUseProgram, glUniform*.
void transferUniforms(unsigned int former, unsigned int program);

} // namespace vx

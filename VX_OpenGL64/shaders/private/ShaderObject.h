// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace vx {

/// Compiles `source` as a new GL shader of `type` into `shader`, whose former value is not looked at. A
/// shader that does not compile is logged as "<className>::loadAndCompile Failed: <info log>" and deleted;
/// `shader` is then 0, the info log in `failure` and the result false.
bool compileShader(unsigned int& shader, std::string& failure, unsigned int type, const char* source,
                   const char* className);

/// A new GL shader of `type` made of `source`; 0 where it does not compile, with the info log in `failure`.
unsigned int compileText(unsigned int type, const char* source, std::string& failure);

/// Deletes the shader of that class, if there is one, and sets it to 0; without a context both stay.
void deleteShader(unsigned int& shader, const char* className);

} // namespace vx

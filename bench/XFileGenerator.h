// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

/// Writes an X text file of about `bytes` bytes to `path`: one mesh at the top level with normals, texture
/// coordinates and a material list, of the kind that exporters write. The same size gives the same file.
void generateXFile(const std::string& path, std::size_t bytes);

// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

/// The numbers of a generated X file in flat arrays: the least that any reader has to do.
struct XFileArrays {
    std::vector<float> positions, normals, uvs;
    std::vector<int> faces, normalFaces;
};

/// Reads a file of `generateXFile` into memory at once and picks its numbers with `std::from_chars`.
XFileArrays scanXFile(const std::string& path);

/// The same with `strtod` and `strtol` on tokens that `getc` gathers.
XFileArrays scanXFileByGetc(const std::string& path);

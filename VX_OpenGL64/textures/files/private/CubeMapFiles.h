// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>

class NSString;

namespace vx {

/// The faces of a cube map in the order of their numbers. "right" is the negative side, and so on: hosts have
/// their pictures named so.
struct CubeMapFace {
    unsigned target;
    const char* word;
};
extern const CubeMapFace cubeMapFaces[6];

/// Finds the six files of the set that `path` names one of: by number, or all of them by word as soon as one
/// is there by its word alone. Empty texts, with the reason in `why`, when the set is not complete.
std::array<std::string, 6> findCubeMapFiles(const NSString& path, std::string& why);

} // namespace vx

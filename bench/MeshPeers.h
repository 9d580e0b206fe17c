// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace vx::bench {

/// Loads the file once and throws the mesh away; how many vertices it had.
using MeshLoad = std::function<int(const std::string& path)>;

/// The mesh readers of other libraries that this build has found, by name, each ready to load.
std::vector<std::pair<std::string, MeshLoad>> meshPeers();

} // namespace vx::bench

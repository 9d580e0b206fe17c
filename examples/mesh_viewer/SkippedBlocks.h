// SPDX-License-Identifier: MIT
#pragma once

#include <string>

/// The blocks at the top level of an X text file that a load passes by, as "2 Frame, 1 Header"; "nothing"
/// when there are none.
std::string skippedBlocks(const char* path);

// SPDX-License-Identifier: MIT
#pragma once

namespace vx {

/// Connects GL's debug output of the current context with the log, where the context has it.
void logDriverMessages();

} // namespace vx

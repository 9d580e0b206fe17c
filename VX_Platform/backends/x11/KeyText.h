// SPDX-License-Identifier: MIT
#pragma once

#include <string>

struct _XDisplay;

namespace vx {

/// What types on a keyboard is told by.
struct TypedKey {
    /// The key's character in the first level of the layout in use, as a code point.
    unsigned character = 0;
    bool shift = false;
    bool capsLock = false;
    bool rightAlternate = false; ///< the third level, where the layout puts it there
};

/// The text of that key with those modifiers, UTF-8; empty where it types none. By the server's keyboard as
/// it is now: input methods have no part in it, so that none can keep a key from the host.
std::string textOf(_XDisplay* connection, const TypedKey& key);

} // namespace vx

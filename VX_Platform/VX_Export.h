// SPDX-License-Identifier: MIT
#pragma once

/// Marks what the shared library exports; everything else stays hidden.
#define VX_EXPORT __attribute__((visibility("default")))

/// Keeps a part of an exported class inside the library.
#define VX_HIDDEN __attribute__((visibility("hidden")))

// SPDX-License-Identifier: MIT
#pragma once

/// Marks what the shared library exports; everything else stays hidden.
#define VX_EXPORT __attribute__((visibility("default")))

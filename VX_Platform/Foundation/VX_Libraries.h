// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <string>
#include <vector>

// Each is for any thread; no context needed, no GL calls.

/// A library that this one stands on.
struct VX_Library {
    /// What it does here: "text", or the kind of picture file that it reads.
    std::string purpose;
    /// Empty for what this library does itself.
    std::string name;
    /// As it tells of itself at run time; of one that does not, as it was at build time. Empty where neither
    /// is known.
    std::string version;
};

/// The version of this library that runs, "1.2.3"; a literal.
VX_EXPORT const char* VX_GetVersion();
/// What windows, pictures and text are made by.
VX_EXPORT std::vector<VX_Library> VX_GetLibraries();
/// The kinds of picture files that can be read, in the order in which they are tried, and what reads them.
VX_EXPORT std::vector<VX_Library> VX_GetPictureDecoders();

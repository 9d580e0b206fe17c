// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>

namespace vx {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, CloseFile>;

/// Opens a file for reading and tells its size in bytes. Never waits, and gives nothing that has no end: a
/// pipe, a device, a folder and a missing file are null, with the reason in `why`. `path` may be null.
FileHandle openRegularFile(const char* path, std::uint64_t& size, std::string& why);

} // namespace vx

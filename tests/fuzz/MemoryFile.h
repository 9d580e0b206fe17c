// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

namespace vx::fuzz {

inline void expect(bool condition) {
    if (!condition)
        std::abort();
}

/// A file in memory; its path stays the same.
class MemoryFile {
public:
    explicit MemoryFile(const char* name)
        : m_Descriptor(memfd_create(name, 0)), m_Path("/proc/self/fd/" + std::to_string(m_Descriptor)) {}

    /// Puts the bytes into it and returns its path.
    const char* fill(const std::uint8_t* data, std::size_t size) {
        expect(ftruncate(m_Descriptor, 0) == 0 &&
               pwrite(m_Descriptor, data, size, 0) == static_cast<ssize_t>(size));
        return m_Path.c_str();
    }

private:
    int m_Descriptor;
    std::string m_Path;
};

} // namespace vx::fuzz

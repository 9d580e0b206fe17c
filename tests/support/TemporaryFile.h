// SPDX-License-Identifier: MIT
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <string_view>

#include <unistd.h>

namespace vx::test {

/// A file with the given bytes, of its own name, that goes with the object.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string_view bytes) {
        char name[] = "/tmp/vx_test_XXXXXX";
        const int descriptor = mkstemp(name);
        m_Path = name;
        FILE* file = fdopen(descriptor, "wb");
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
    }
    ~TemporaryFile() { std::filesystem::remove(m_Path); }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const char* path() const { return m_Path.c_str(); }

private:
    std::string m_Path;
};

} // namespace vx::test

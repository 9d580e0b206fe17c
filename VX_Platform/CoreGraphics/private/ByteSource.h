// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/Foundation/private/RegularFile.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <utility>

namespace vx {

/// The bytes of a file or of memory, of a length that is known from the start. A file is read and not mapped:
/// one that is cut while it is read merely ends earlier.
class ByteSource {
public:
    /// Null, with the reason in `why`, for what cannot be read or is no regular file.
    static std::unique_ptr<ByteSource> ofFile(const char* path, std::string& why);
    /// The memory must outlive the source.
    explicit ByteSource(std::span<const unsigned char> memory);
    ByteSource(const ByteSource&) = delete;
    ByteSource& operator=(const ByteSource&) = delete;

    std::uint64_t length() const { return m_Length; }
    std::uint64_t position() const { return m_WindowStart + std::uint64_t(m_At - m_Window); }
    std::uint64_t left() const { return m_Length - position(); }
    /// A position behind the end is the end.
    void seek(std::uint64_t position);
    void skip(std::uint64_t count) { seek(count < left() ? position() + count : m_Length); }

    /// The next byte, -1 at the end.
    int get() { return m_At < m_End || refill() ? *m_At++ : -1; }
    /// How many of `count` bytes there were.
    std::size_t readSome(void* to, std::size_t count);
    bool read(void* to, std::size_t count) { return readSome(to, count) == count; }
    /// The next bytes, as many as are at hand, which then count as read. Empty at the end; valid until the
    /// next call.
    std::span<const unsigned char> take();

private:
    ByteSource(FileHandle file, std::uint64_t length) : m_File(std::move(file)), m_Length(length) {}
    bool refill();
    std::size_t readFile(unsigned char* to, std::size_t count, std::uint64_t from);

    FileHandle m_File; ///< null for memory
    std::uint64_t m_Length = 0;
    std::unique_ptr<unsigned char[]> m_Buffer;
    std::uint64_t m_WindowStart = 0; ///< where in the file the window begins
    const unsigned char* m_Window = nullptr;
    const unsigned char* m_At = nullptr;
    const unsigned char* m_End = nullptr;
};

inline std::uint32_t littleEndian16(const unsigned char* p) {
    return p[0] | std::uint32_t(p[1]) << 8;
}
inline std::uint32_t littleEndian32(const unsigned char* p) {
    return littleEndian16(p) | littleEndian16(p + 2) << 16;
}
inline std::uint32_t bigEndian16(const unsigned char* p) {
    return std::uint32_t(p[0]) << 8 | p[1];
}
inline std::uint32_t bigEndian32(const unsigned char* p) {
    return bigEndian16(p) << 16 | bigEndian16(p + 2);
}

} // namespace vx

// SPDX-License-Identifier: MIT
#include <VX_Platform/CoreGraphics/private/ByteSource.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <unistd.h>

namespace {

constexpr std::size_t kBufferSize = 32768;
/// From here on a read goes past the buffer.
constexpr std::size_t kLargeRead = 1024;

} // namespace

std::unique_ptr<vx::ByteSource> vx::ByteSource::ofFile(const char* path, std::string& why) {
    std::uint64_t length = 0;
    FileHandle file = openRegularFile(path, length, why);
    return file ? std::unique_ptr<ByteSource>(new ByteSource(std::move(file), length)) : nullptr;
}

vx::ByteSource::ByteSource(std::span<const unsigned char> memory)
    : m_Length(memory.size()), m_Window(memory.data()), m_At(m_Window), m_End(m_Window + memory.size()) {}

void vx::ByteSource::seek(std::uint64_t position) {
    position = std::min(position, m_Length);
    if (position >= m_WindowStart && position - m_WindowStart <= std::uint64_t(m_End - m_Window)) {
        m_At = m_Window + (position - m_WindowStart);
        return;
    }
    m_WindowStart = position;
    m_Window = m_At = m_End = m_Buffer.get();
}

std::size_t vx::ByteSource::readFile(unsigned char* to, std::size_t count, std::uint64_t from) {
    std::size_t done = 0;
    while (done < count) {
        const ssize_t got = pread(fileno(m_File.get()), to + done, count - done, off_t(from + done));
        if (got > 0)
            done += std::size_t(got);
        else if (got == 0 || errno != EINTR)
            break;
    }
    return done;
}

bool vx::ByteSource::refill() {
    if (!m_File)
        return false;
    if (!m_Buffer)
        m_Buffer.reset(new unsigned char[kBufferSize]);
    m_WindowStart = position();
    const std::size_t wanted = std::size_t(std::min<std::uint64_t>(kBufferSize, m_Length - m_WindowStart));
    m_Window = m_At = m_Buffer.get();
    m_End = m_Window + readFile(m_Buffer.get(), wanted, m_WindowStart);
    return m_At < m_End;
}

std::size_t vx::ByteSource::readSome(void* to, std::size_t count) {
    auto* out = static_cast<unsigned char*>(to);
    count = std::size_t(std::min<std::uint64_t>(count, left()));
    std::size_t done = 0;
    while (done < count) {
        if (m_At == m_End && m_File && count - done >= kLargeRead) {
            const std::size_t got = readFile(out + done, count - done, position());
            seek(position() + got);
            return done + got;
        }
        if (m_At == m_End && !refill())
            break;
        const std::size_t part = std::min(count - done, std::size_t(m_End - m_At));
        std::memcpy(out + done, m_At, part);
        m_At += part;
        done += part;
    }
    return done;
}

std::span<const unsigned char> vx::ByteSource::take() {
    if (m_At == m_End)
        refill();
    const std::span<const unsigned char> window(m_At, std::size_t(m_End - m_At));
    m_At = m_End;
    return window;
}

// SPDX-License-Identifier: MIT
#include <VX_System/VX_SystemSimpleLex.h>

#include <VX_System/private/NumberText.h>

#include <algorithm>
#include <cstring>

#include <sys/stat.h>

namespace {

/// Before the block there is room for a byte that waits for the one behind it, after it for the NUL and the
/// bytes that the number scanner may look at.
constexpr std::size_t kRoomBefore = 64;
constexpr std::size_t kBlockSize = std::size_t{64} * 1024;
constexpr std::size_t kRoomAfter = 16;

bool isWhite(int c) {
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

bool isAmong(int c, int count, const int* any) {
    return std::find(any, any + std::max(count, 0), c) != any + std::max(count, 0);
}

std::size_t sizeOf(FILE* file) {
    struct stat status;
    const int descriptor = file ? fileno(file) : -1;
    if (descriptor < 0 || fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        return 0;
    return static_cast<std::size_t>(status.st_size);
}

} // namespace

VX_SystemSimpleLex::VX_SystemSimpleLex(FILE* file)
    : m_File(file),
      m_Block(new char[kRoomBefore + kBlockSize + kRoomAfter]()),
      m_Next(m_Block.get() + kRoomBefore),
      m_End(m_Next),
      m_Behind(sizeOf(file)),
      m_IsUsedUp(!file) {}

VX_SystemSimpleLex::~VX_SystemSimpleLex() {
    if (m_File)
        std::fclose(m_File);
}

/// Reads the next block behind the few bytes at hand; false when there is none.
bool VX_SystemSimpleLex::fill() {
    if (m_IsUsedUp)
        return false;
    const std::ptrdiff_t kept = m_End - m_Next;
    char* block = m_Block.get() + kRoomBefore;
    std::memmove(block - kept, m_Next, static_cast<std::size_t>(kept));
    const std::size_t got = std::fread(block, 1, kBlockSize, m_File);
    block[got] = '\0';
    m_Next = block - kept;
    m_End = block + got;
    m_Behind -= std::min(m_Behind, got);
    m_IsUsedUp = got == 0;
    return got != 0;
}

/// Keeps at least `count` bytes at hand, a handful.
bool VX_SystemSimpleLex::atLeast(std::ptrdiff_t count) {
    while (m_End - m_Next < count) {
        if (!fill())
            return false;
    }
    return true;
}

bool VX_SystemSimpleLex::isLineFeedAfterReturn() {
    return *m_Next == '\r' && atLeast(2) && m_Next[1] == '\n';
}

int VX_SystemSimpleLex::get() {
    if (isEOF())
        return endOfFile;
    if (isLineFeedAfterReturn())
        ++m_Next;
    return static_cast<unsigned char>(*m_Next++);
}

int VX_SystemSimpleLex::peek() {
    if (isEOF())
        return endOfFile;
    return isLineFeedAfterReturn() ? '\n' : static_cast<unsigned char>(*m_Next);
}

void VX_SystemSimpleLex::find(int c) {
    if (c < 0 || c > 255 || c == '\r') {
        findAny(1, &c);
        return;
    }
    while (!isEOF()) {
        if (const void* found = std::memchr(m_Next, c, static_cast<std::size_t>(m_End - m_Next))) {
            m_Next = static_cast<const char*>(found) + 1;
            return;
        }
        m_Next = m_End;
    }
}

int VX_SystemSimpleLex::findAny(int count, const int* any) {
    bool wanted[256] = {};
    for (int i = 0; i < count; ++i) {
        if (any[i] >= 0 && any[i] < 256)
            wanted[any[i]] = true;
    }
    while (!isEOF()) {
        while (m_Next != m_End && !wanted[static_cast<unsigned char>(*m_Next)])
            ++m_Next;
        if (m_Next == m_End)
            continue;
        // The return of a line end that is handed over as one is not there to be found.
        const int c = get();
        if (wanted[c])
            return c;
    }
    return endOfFile;
}

int VX_SystemSimpleLex::read(int count, void* out) {
    auto* to = static_cast<char*>(out);
    int done = 0;
    while (done < count && !isEOF()) {
        const int part = static_cast<int>(std::min<std::ptrdiff_t>(count - done, m_End - m_Next));
        std::memcpy(to + done, m_Next, static_cast<std::size_t>(part));
        m_Next += part;
        done += part;
    }
    return done;
}

void VX_SystemSimpleLex::skipWhiteSpace() {
    while (!isEOF() && isWhite(*m_Next))
        ++m_Next;
}

void VX_SystemSimpleLex::getStringOnlyToken(std::string& out, int count, const int* terminators) {
    out.clear();
    while (!isEOF()) {
        const int c = get();
        if (isAmong(c, count, terminators))
            return;
        out.push_back(static_cast<char>(c));
    }
}

void VX_SystemSimpleLex::getStringWhiteToken(std::string& out, int count, const int* terminators) {
    out.clear();
    skipWhiteSpace();
    for (int c = peek(); c != endOfFile && !isWhite(c) && !isAmong(c, count, terminators); c = peek())
        out.push_back(static_cast<char>(get()));
}

void VX_SystemSimpleLex::readToken(int terminator) {
    getStringOnlyToken(m_Token, 1, &terminator);
}

int VX_SystemSimpleLex::getInt(int terminator) {
    readToken(terminator);
    return vx::intOfText(m_Token);
}

double VX_SystemSimpleLex::getDouble(int terminator) {
    readToken(terminator);
    return vx::doubleOfText(m_Token);
}

std::size_t VX_SystemSimpleLex::bytesLeft() const {
    return static_cast<std::size_t>(m_End - m_Next) + m_Behind;
}

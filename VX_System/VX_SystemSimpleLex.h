// SPDX-License-Identifier: MIT
#pragma once

#include <VX_Platform/VX_Export.h>

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>

namespace vx {
class LexCursor;
}

/// Reads a text file character by character or token by token. It reads the file in blocks of its own; the
/// operations on text hand CR LF over as one line feed and anything else as it is. Needs no locale: numbers
/// are those of the C locale. One thread at a time; nothing here takes a lock.
class VX_EXPORT VX_SystemSimpleLex {
public:
    /// What `get` and `peek` give at the end of the file.
    static constexpr int endOfFile = -1;

    /// Takes over `file`, opened for reading and positioned at its start; the destructor closes it. Null is
    /// an empty file.
    explicit VX_SystemSimpleLex(FILE* file);
    virtual ~VX_SystemSimpleLex();
    VX_SystemSimpleLex(const VX_SystemSimpleLex&) = delete;
    VX_SystemSimpleLex& operator=(const VX_SystemSimpleLex&) = delete;

    /// Consumes one character and returns it, 0 to 255, or `endOfFile`.
    int get();
    /// The next character, 0 to 255, which stays unread, or `endOfFile`.
    int peek();
    /// Consumes characters up to and including the next `c`, or up to the end of the file.
    void find(int c);
    /// Likewise with the first of the `count` characters `any`; returns the one found, or `endOfFile`.
    int findAny(int count, const int* any);
    /// Reads `count` raw bytes into `out`, without a look at line ends; returns how many there were.
    int read(int count, void* out);
    /// True as soon as the last character has been consumed.
    bool isEOF() { return m_Next == m_End && !fill(); }
    /// Consumes spaces, tabs, line feeds and carriage returns.
    void skipWhiteSpace();

    /// Replaces `out` by the characters up to the first of the `count` terminators, which is consumed as
    /// well, or up to the end of the file. White space is no terminator here.
    void getStringOnlyToken(std::string& out, int count, const int* terminators);
    /// Skips white space, then replaces `out` by the characters up to white space or the first of the `count`
    /// terminators, which stays unread.
    void getStringWhiteToken(std::string& out, int count, const int* terminators);

    /// `getStringOnlyToken` with the one terminator, converted as `atoi` does it, without a copy on the way.
    int getInt(int terminator);
    /// The same as `atof` does it in the C locale.
    double getDouble(int terminator);

    /// Bytes of the file that are still unread; no more than those at hand where the file does not know its
    /// size. Tells how much a count found in the file can be good for.
    std::size_t bytesLeft() const;

private:
    friend class vx::LexCursor;

    bool fill();
    bool atLeast(std::ptrdiff_t count);
    bool isLineFeedAfterReturn();
    void readToken(int terminator);

    FILE* m_File;
    std::unique_ptr<char[]> m_Block;
    /// The bytes at hand, unread.
    const char* m_Next;
    const char* m_End;
    /// Bytes of the file behind those at hand, as far as it is known.
    std::size_t m_Behind = 0;
    bool m_IsUsedUp = false;
    std::string m_Token;
};

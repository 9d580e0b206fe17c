// SPDX-License-Identifier: MIT
#pragma once

#include <VX_System/VX_SystemSimpleLex.h>
#include <VX_System/private/NumberText.h>

namespace vx {

/// Reads on for a lexer in the middle of a long list: the operations are the lexer's own, but the place in
/// the file stays in a register. The lexer itself must not be used while its cursor lives.
class LexCursor {
public:
    explicit LexCursor(VX_SystemSimpleLex& lexer) : m_Lexer(lexer), m_Next(lexer.m_Next) {}
    ~LexCursor() { m_Lexer.m_Next = m_Next; }
    LexCursor(const LexCursor&) = delete;
    LexCursor& operator=(const LexCursor&) = delete;

    bool isEOF() { return m_Next == m_Lexer.m_End && byLexer(&VX_SystemSimpleLex::isEOF); }

    int get() {
        if (m_Lexer.m_End - m_Next > 1 && *m_Next != '\r')
            return static_cast<unsigned char>(*m_Next++);
        return byLexer(&VX_SystemSimpleLex::get);
    }

    /// The terminator is ';' or ',': nothing that could be a part of a number.
    template <char terminator>
    [[gnu::always_inline]] int getInt() {
        int value;
        const char* end = scanInt(m_Next, value);
        if (end && *end == terminator) {
            m_Next = end + 1;
            return value;
        }
        return byLexer(&VX_SystemSimpleLex::getInt, int{terminator});
    }

    template <char terminator>
    [[gnu::always_inline]] double getDouble() {
        double value;
        const char* end = scanDouble(m_Next, value);
        if (end && *end == terminator) {
            m_Next = end + 1;
            return value;
        }
        return byLexer(&VX_SystemSimpleLex::getDouble, int{terminator});
    }

private:
    template <class Result, class... Arguments>
    Result byLexer(Result (VX_SystemSimpleLex::*operation)(Arguments...), Arguments... arguments) {
        m_Lexer.m_Next = m_Next;
        const Result result = (m_Lexer.*operation)(arguments...);
        m_Next = m_Lexer.m_Next;
        return result;
    }

    VX_SystemSimpleLex& m_Lexer;
    const char* m_Next;
};

} // namespace vx

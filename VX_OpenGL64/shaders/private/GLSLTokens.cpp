// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/private/GLSLTokens.h>

#include <utility>

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isWordStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

} // namespace

/// A pair of different line end characters is one line end.
bool vx::GLSLTokens::skipLineEnd() {
    const char first = ahead();
    if (!isLineEnd(first))
        return false;
    m_Place += isLineEnd(ahead(1)) && ahead(1) != first ? 2 : 1;
    ++m_Line;
    return true;
}

bool vx::GLSLTokens::skipContinuation() {
    if (ahead() != '\\' || !isLineEnd(ahead(1)))
        return false;
    ++m_Place;
    return skipLineEnd();
}

void vx::GLSLTokens::skipLineComment() {
    while (m_Place < m_Text.size() && !isLineEnd(ahead())) {
        if (!skipContinuation())
            ++m_Place;
    }
}

void vx::GLSLTokens::skipBlockComment() {
    m_Place += 2;
    while (m_Place < m_Text.size() && !atBlockEnd()) {
        if (!skipLineEnd())
            ++m_Place;
    }
    m_Place += atBlockEnd() ? 2 : 0;
}

void vx::GLSLTokens::skipBlanks() {
    for (;;) {
        const char c = ahead();
        if (c == ' ' || c == '\t' || c == '\v' || c == '\f')
            ++m_Place;
        else if (c == '/' && ahead(1) == '/')
            skipLineComment();
        else if (c == '/' && ahead(1) == '*')
            skipBlockComment();
        else if (!skipContinuation())
            return;
    }
}

vx::GLSLToken vx::GLSLTokens::taken(GLSLToken::Kind kind, std::size_t begin, int line) {
    return {kind, m_Text.substr(begin, m_Place - begin), line,
            std::exchange(m_IsLineStart, kind == GLSLToken::LineEnd)};
}

vx::GLSLToken vx::GLSLTokens::next() {
    skipBlanks();
    const std::size_t begin = m_Place;
    const int line = m_Line;
    if (begin == m_Text.size())
        return taken(GLSLToken::End, begin, line);
    if (skipLineEnd())
        return taken(GLSLToken::LineEnd, begin, line);
    const char first = m_Text[m_Place++];
    if (!isWordStart(first) && !isDigit(first))
        return taken(GLSLToken::Sign, begin, line);
    const auto belongs = [&](char c) { return isWordStart(c) || isDigit(c) || (c == '.' && isDigit(first)); };
    while (m_Place < m_Text.size() && belongs(m_Text[m_Place]))
        ++m_Place;
    return taken(isDigit(first) ? GLSLToken::Number : GLSLToken::Word, begin, line);
}

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

} // namespace

/// A pair of different line end characters is one line end.
bool vx::GLSLTokens::skipLineEnd() {
    if (!at("\n") && !at("\r"))
        return false;
    m_Place += at("\r\n") || at("\n\r") ? 2 : 1;
    ++m_Line;
    return true;
}

bool vx::GLSLTokens::skipContinuation() {
    if (!at("\\\n") && !at("\\\r"))
        return false;
    ++m_Place;
    return skipLineEnd();
}

void vx::GLSLTokens::skipLineComment() {
    while (m_Place < m_Text.size() && !at("\n") && !at("\r")) {
        if (!skipContinuation())
            ++m_Place;
    }
}

void vx::GLSLTokens::skipBlockComment() {
    m_Place += 2;
    while (m_Place < m_Text.size() && !at("*/")) {
        if (!skipLineEnd())
            ++m_Place;
    }
    m_Place += at("*/") ? 2 : 0;
}

void vx::GLSLTokens::skipBlanks() {
    for (;;) {
        if (at("//"))
            skipLineComment();
        else if (at("/*"))
            skipBlockComment();
        else if (at(" ") || at("\t") || at("\v") || at("\f"))
            ++m_Place;
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

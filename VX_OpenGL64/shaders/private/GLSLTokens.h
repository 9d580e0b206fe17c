// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>

namespace vx {

/// A word, number or other sign of a shader's text, or the end of a line or of the text.
struct GLSLToken {
    enum Kind { Word, Number, Sign, LineEnd, End };

    bool is(std::string_view what) const { return text == what; }
    /// Of a sign that begins a directive.
    bool isHash() const { return isFirstOfLine && is("#"); }
    bool endsLine() const { return kind == LineEnd || kind == End; }

    Kind kind;
    std::string_view text; // a part of the text that is read
    int line;              // counted from 1
    bool isFirstOfLine;
};

/// Reads a shader's text a token at a time, past comments and past line ends behind a backslash.
class GLSLTokens {
public:
    /// The text has to outlive the reader.
    explicit GLSLTokens(std::string_view text) : m_Text(text) {}

    GLSLToken next();

private:
    void skipBlanks();
    bool skipLineEnd();
    bool skipContinuation();
    void skipLineComment();
    void skipBlockComment();
    /// The character that many places ahead, 0 behind the end.
    char ahead(std::size_t count = 0) const {
        return count < m_Text.size() - m_Place ? m_Text[m_Place + count] : '\0';
    }
    bool atBlockEnd() const { return ahead() == '*' && ahead(1) == '/'; }
    GLSLToken taken(GLSLToken::Kind kind, std::size_t begin, int line);

    std::string_view m_Text;
    std::size_t m_Place = 0;
    int m_Line = 1;
    bool m_IsLineStart = true;
};

} // namespace vx

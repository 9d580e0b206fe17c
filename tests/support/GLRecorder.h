// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace vx::test {

/// Numbers are decimal, addresses "*".
template <class Value>
std::string text(Value value) {
    if constexpr (std::is_pointer_v<Value>)
        return "*";
    else
        return std::to_string(value);
}

/// A call as the recorder writes it: `call("glLinkProgram", 7)` is "glLinkProgram(7)".
template <class... Arguments>
std::string call(const char* name, Arguments... arguments) {
    std::string line;
    ((line += (line.empty() ? "" : ", ") + text(arguments)), ...);
    return name + ("(" + line + ")");
}

/// While it lives, writes down GL calls and forwards them to the driver: those that make, link and delete
/// objects, and draws from arrays. An entry point of an extension that the driver lacks is written down only.
/// One at a time, made and ended with the same context current.
class GLRecorder {
public:
    using Lines = std::vector<std::string>;

    GLRecorder();
    ~GLRecorder();
    GLRecorder(const GLRecorder&) = delete;
    GLRecorder& operator=(const GLRecorder&) = delete;

    /// Writes a line, and lets `onCall` look at the state in which it comes.
    void note(std::string line) {
        m_Lines.push_back(std::move(line));
        if (onCall)
            onCall();
    }
    /// The lines since the start or the last `take`.
    Lines take() { return std::exchange(m_Lines, {}); }
    /// How many lines since then call `name`.
    int count(const std::string& name) const;

    std::function<void()> onCall;

private:
    Lines m_Lines;
};

} // namespace vx::test

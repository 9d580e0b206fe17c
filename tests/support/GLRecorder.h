// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace vx::test {

/// Stands for the address of memory that GL writes into.
struct Out {};
inline constexpr Out out{};

/// How the recorder writes an argument. Whole numbers are decimal below 256 and hexadecimal from there on, as
/// enumerants are; addresses, which include offsets into buffers, are written as whole numbers.
inline std::string text(Out) {
    return "*";
}
inline std::string text(const std::vector<unsigned>& names) {
    std::string list = "{";
    for (const unsigned name : names)
        list += (list.size() > 1 ? " " : "") + std::to_string(name);
    return list + "}";
}
inline std::string text(std::nullptr_t) {
    return "0";
}
inline std::string text(const char* string) {
    return string ? "\"" + std::string(string) + "\"" : "0";
}
template <class Number>
requires std::is_arithmetic_v<Number> std::string text(Number value) {
    char buffer[64];
    if constexpr (std::is_floating_point_v<Number>)
        std::snprintf(buffer, sizeof buffer, "%g", static_cast<double>(value));
    else if (static_cast<long long>(value) < 256)
        std::snprintf(buffer, sizeof buffer, "%lld", static_cast<long long>(value));
    else
        std::snprintf(buffer, sizeof buffer, "0x%llx", static_cast<unsigned long long>(value));
    return buffer;
}
inline std::string text(const void* address) {
    return text(reinterpret_cast<unsigned long long>(address));
}
inline std::string text(const float* address) {
    return text(static_cast<const void*>(address));
}

/// A call as the recorder writes it: `call("glBindTexture", GL_TEXTURE_2D, 7)` is "glBindTexture(0xde1, 7)".
template <class... Arguments>
std::string call(const char* name, const Arguments&... arguments) {
    std::string line;
    ((line += (line.empty() ? "" : ", ") + text(arguments)), ...);
    return name + ("(" + line + ")");
}

/// While it lives, writes down the GL calls that go through libepoxy and forwards them to the driver. An
/// entry point of an extension that the driver lacks is written down only. One at a time, made and ended with
/// the same context current.
class GLRecorder {
public:
    using Lines = std::vector<std::string>;

    GLRecorder();
    ~GLRecorder();
    GLRecorder(const GLRecorder&) = delete;
    GLRecorder& operator=(const GLRecorder&) = delete;

    /// Writes a line of the test's own between the calls.
    void note(std::string line) { m_Lines.push_back(std::move(line)); }
    /// The lines since the start or the last `take`.
    Lines take() { return std::exchange(m_Lines, {}); }

private:
    Lines m_Lines;
};

/// How many of the lines call `name`.
int countOf(const GLRecorder::Lines& lines, const std::string& name);

} // namespace vx::test

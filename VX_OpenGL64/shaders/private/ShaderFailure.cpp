// SPDX-License-Identifier: MIT
#include <VX_OpenGL64/shaders/private/ShaderFailure.h>

#include <cstdio>
#include <sstream>

namespace {

/// Reads "0:12(3): error: ...", "0(12) : error ..." or "ERROR: 0:12: ...", as drivers write it: the line's
/// number, 0 when there is none, and the message.
int splitRemark(const std::string& text, std::string& message) {
    message = text;
    const std::size_t start = text.starts_with("ERROR: ") ? 7 : text.starts_with("WARNING: ") ? 9 : 0;
    int line = 0, length = 0;
    const char* place = text.c_str() + start;
    if (std::sscanf(place, "%*d:%d%n", &line, &length) != 1 &&
        std::sscanf(place, "%*d(%d%n", &line, &length) != 1)
        return 0;
    const std::size_t behind =
        text.find_first_not_of("():0123456789 ", start + static_cast<std::size_t>(length));
    message = behind == std::string::npos ? "" : text.substr(behind);
    return line;
}

std::string lineOf(const std::string& source, int number) {
    std::istringstream lines(source);
    std::string line;
    for (int i = 0; i < number; ++i) {
        if (!std::getline(lines, line))
            return {};
    }
    const std::size_t first = line.find_first_not_of(" \t");
    return first == std::string::npos ? "" : line.substr(first);
}

} // namespace

std::vector<std::string> vx::locateFailures(const std::string& file, const std::string& source,
                                            const std::string& infoLog) {
    std::vector<std::string> located;
    std::istringstream remarks(infoLog);
    for (std::string remark, message; std::getline(remarks, remark);) {
        if (remark.find_first_not_of(" \t\r") == std::string::npos || remark.front() == '\0')
            continue;
        const int number = splitRemark(remark, message);
        const std::string place = number > 0 ? ":" + std::to_string(number) : "";
        const std::string quoted = lineOf(source, number);
        located.push_back(file + place + ": " + message + (quoted.empty() ? "" : " | " + quoted));
    }
    return located;
}

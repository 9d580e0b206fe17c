// SPDX-License-Identifier: MIT
#pragma once

#include <sys/wait.h>

#include <cstdio>
#include <string>

namespace vx::test {

struct Result {
    int status;
    std::string output;
};

/// Runs a command line without a display.
inline Result run(const std::string& command) {
    Result result{-1, {}};
    FILE* pipe = popen(("unset DISPLAY; timeout 60 " + command + " 2>&1").c_str(), "r");
    for (int letter; pipe && (letter = std::fgetc(pipe)) != EOF;)
        result.output += static_cast<char>(letter);
    const int status = pipe ? pclose(pipe) : -1;
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return result;
}

} // namespace vx::test

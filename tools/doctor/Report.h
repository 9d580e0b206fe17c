// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>

/// What is printed, line by line, so that a process that dies in a driver has told all that it knew by then.

/// While it lives, the library's log comes as rows of the section that is being printed.
struct LogRows {
    LogRows();
    ~LogRows();
    LogRows(const LogRows&) = delete;
    LogRows& operator=(const LogRows&) = delete;
};
/// Whether the rows of the log are shown; what they say may come as rows of the section itself.
void showLog(bool shown);
/// The last line of the log, shown or not.
std::string lastLogLine();

/// Begins a section whose labels take that many letters.
void printSection(const char* title, std::size_t labelWidth = 18);
void printRow(const std::string& label, const std::string& value);

/// A text as `printf` makes it.
std::string textOf(const char* format, ...) __attribute__((format(printf, 1, 2)));

// SPDX-License-Identifier: MIT
#include <tools/doctor/Report.h>

#include <VX_Platform/Foundation/NSLog.h>

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <mutex>

namespace {

// Lines of the log come from the view's thread too.
std::mutex lock;
std::string lastLine;
std::atomic<bool> isShown{true};
std::atomic<std::size_t> width{0};

void toReport(const char* line, void*) {
    {
        std::lock_guard guard(lock);
        lastLine = line;
    }
    if (isShown)
        printRow("log", line);
}

} // namespace

LogRows::LogRows() {
    NSLogSetSink(toReport, nullptr);
}

LogRows::~LogRows() {
    NSLogSetSink(nullptr, nullptr);
}

void showLog(bool shown) {
    isShown = shown;
}

std::string lastLogLine() {
    std::lock_guard guard(lock);
    return lastLine;
}

void printSection(const char* title, std::size_t labelWidth) {
    width = labelWidth;
    std::printf("\n%s\n", title);
    std::fflush(stdout);
}

void printRow(const std::string& label, const std::string& value) {
    std::printf("  %-*s  %s\n", static_cast<int>(width), label.c_str(), value.c_str());
    std::fflush(stdout);
}

std::string textOf(const char* format, ...) {
    char text[512];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}

// SPDX-License-Identifier: MIT
#include <VX_Platform/Foundation/NSLog.h>

#include <VX_Platform/Foundation/private/TextFormat.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <mutex>

namespace {

struct Sink {
    std::mutex lock;
    NSLogSink function = nullptr;
    void* user = nullptr;
};

// Never destroyed: objects that end after main may still log.
Sink& currentSink() {
    static Sink* sink = new Sink;
    return *sink;
}

void writeToStandardError(const char* line) {
    std::timespec now{};
    std::timespec_get(&now, TIME_UTC);
    std::tm local{};
    localtime_r(&now.tv_sec, &local);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y-%m-%d %H:%M:%S", &local);
    std::fprintf(stderr, "%s.%03ld %s\n", stamp, now.tv_nsec / 1000000, line);
}

void write(const char* format, va_list arguments) {
    const std::string line = vx::formatText(format, arguments);
    Sink& sink = currentSink();
    std::lock_guard guard(sink.lock);
    if (sink.function)
        sink.function(line.c_str(), sink.user);
    else
        writeToStandardError(line.c_str());
}

} // namespace

void NSLog(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    write(format, arguments);
    va_end(arguments);
}

void NSLogSetSink(NSLogSink sink, void* user) {
    Sink& current = currentSink();
    std::lock_guard guard(current.lock);
    current.function = sink;
    current.user = user;
}

void vx::fatal(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    write(format, arguments);
    va_end(arguments);
    std::abort();
}

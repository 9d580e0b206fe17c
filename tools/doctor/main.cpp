// SPDX-License-Identifier: MIT
// Tells what this machine gives the toolkit: the page that a bug report begins with.
#include <tools/doctor/Doctor.h>
#include <tools/doctor/Report.h>

#include <cstdio>
#include <string_view>

namespace {

constexpr const char* kUsage = "usage: %s [--platform NAME] [--picture FILE.png] [--help]\n";
constexpr const char* kHelp =
    "\n"
    "Prints what this machine gives VX_OpenGL64: libraries, fonts, displays, the OpenGL driver, and how\n"
    "evenly a small view is refreshed over two seconds.\n"
    "\n"
    "  --platform NAME      x11 or headless, which needs no display; else the window system that is there\n"
    "  --picture FILE.png   also writes the calibration picture as the driver draws it\n"
    "  --help               this text\n"
    "\n"
    "Ends with 0 when a view can run, with 1 when none can (the last line names what is missing) or the\n"
    "picture was not written, and with 2 for arguments that are none of these.\n";

struct Options {
    const char* platform = nullptr;
    const char* picture = nullptr;
    bool needsHelp = false;

    bool read(int count, char** words) {
        for (int i = 1; i < count; ++i)
            if (!take(words[i], i + 1 < count ? words[i + 1] : nullptr, i))
                return false;
        return true;
    }
    bool take(std::string_view word, const char* value, int& i) {
        if (word == "--help")
            return needsHelp = true;
        ++i;
        if (word == "--platform")
            return (platform = value);
        return word == "--picture" && (picture = value);
    }
};

std::string examine(const Options& options) {
    std::string missing = printPlatform(options.platform);
    if (!missing.empty())
        return missing;
    printDisplays();
    missing = printOpenGL();
    return missing.empty() ? printRefreshes(options.picture) : missing;
}

int report(const Options& options) {
    const LogRows log;
    std::printf("vx_doctor: what this machine gives VX_OpenGL64\n");
    printLibraries();
    printDecoders();
    printMachine();
    printFonts();
    const std::string missing = examine(options);
    if (missing.empty())
        std::printf("\nA view can run here.\n");
    else
        std::printf("\nNot well: %s\n", missing.c_str());
    return missing.empty() ? 0 : 1;
}

} // namespace

int main(int count, char** words) {
    Options options;
    if (!options.read(count, words)) {
        std::fprintf(stderr, kUsage, words[0]);
        return 2;
    }
    if (!options.needsHelp)
        return report(options);
    std::printf(kUsage, words[0]);
    std::fputs(kHelp, stdout);
    return 0;
}

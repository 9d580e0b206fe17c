// SPDX-License-Identifier: MIT
#include <tools/doctor/Doctor.h>
#include <tools/doctor/Report.h>

#include <cstdlib>
#include <fstream>
#include <thread>

#include <sys/utsname.h>

namespace {

constexpr std::size_t kVariableWidth = 30;

// What makes EGL, Mesa, SDL and X11 behave otherwise than they do by themselves.
constexpr const char* kVariables[] = {"DISPLAY",
                                      "WAYLAND_DISPLAY",
                                      "XDG_SESSION_TYPE",
                                      "SDL_VIDEODRIVER",
                                      "EGL_PLATFORM",
                                      "LIBGL_ALWAYS_SOFTWARE",
                                      "GALLIUM_DRIVER",
                                      "MESA_LOADER_DRIVER_OVERRIDE",
                                      "MESA_GL_VERSION_OVERRIDE",
                                      "MESA_EXTENSION_OVERRIDE",
                                      "MESA_GLSL_VERSION_OVERRIDE",
                                      "DRI_PRIME",
                                      "vblank_mode",
                                      "__GL_SYNC_TO_VBLANK",
                                      "__NV_PRIME_RENDER_OFFLOAD",
                                      "__EGL_VENDOR_LIBRARY_FILENAMES",
                                      "LD_PRELOAD"};

// What stands behind PRETTY_NAME= in os-release, without its quotation marks.
std::string distribution() {
    std::ifstream file("/etc/os-release");
    const std::string key = "PRETTY_NAME=";
    for (std::string line; std::getline(file, line);) {
        if (line.compare(0, key.size(), key) != 0)
            continue;
        const bool isQuoted = line.size() > key.size() + 1 && line[key.size()] == '"';
        return line.substr(key.size() + isQuoted, line.size() - key.size() - 2 * isQuoted);
    }
    return "not told by /etc/os-release";
}

// What else keeps the processors busy is the first cause of lost refreshes.
std::string loads() {
    double load[3] = {};
    return getloadavg(load, 3) == 3
               ? textOf("%.2f %.2f %.2f in the last 1, 5, 15 minutes", load[0], load[1], load[2])
               : "not told";
}

void printEnvironment() {
    printSection("Environment", kVariableWidth);
    bool isAnySet = false;
    for (const char* variable : kVariables) {
        const char* value = std::getenv(variable);
        isAnySet = isAnySet || value;
        if (value)
            printRow(variable, *value ? value : "(set and empty)");
    }
    if (!isAnySet)
        printRow("nothing set", "of what windows and drivers go by");
}

} // namespace

void printMachine() {
    printSection("Machine");
    utsname name{};
    uname(&name);
    printRow("system", distribution());
    printRow("kernel", textOf("%s %s, %s", name.sysname, name.release, name.machine));
    printRow("processors", std::to_string(std::thread::hardware_concurrency()));
    printRow("load", loads());
    printEnvironment();
}

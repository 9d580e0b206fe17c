// SPDX-License-Identifier: MIT
#include <bench/PacingBench.h>
#include <bench/RatioTable.h>

#include <VX_Platform/AppKit/NSApplication.h>
#include <VX_Platform/Foundation/NSLog.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

// vx_bench [FILTER] [--quick]: the rows whose name holds FILTER; --quick for a look rather than a
// measurement.
int main(int argc, char** argv) {
    if (argc == 3 && argv[1] == std::string("--pacing-on-x11"))
        return vx::bench::printPacingOnX11(std::atof(argv[2]));

    std::string filter;
    bool quick = false;
    for (int index = 1; index < argc; ++index) {
        if (argv[index] == std::string("--quick"))
            quick = true;
        else
            filter = argv[index];
    }
    std::vector<std::string> options = {argv[0],
                                        quick ? "--benchmark_min_time=0.01" : "--benchmark_min_time=0.03"};
    std::vector<char*> arguments;
    for (std::string& option : options)
        arguments.push_back(option.data());
    int count = int(arguments.size());
    benchmark::Initialize(&count, arguments.data());
    if (quick)
        vx::bench::pacingSeconds = 3;

    // A software driver that wakes a thread for each frame takes 20 times as long as the frame's own work,
    // and never twice the same.
    setenv("LP_NUM_THREADS", "0", 0);
    NSLogSetSink([](const char*, void*) {}, nullptr);
    NSApplication::useHeadlessPlatform();
    if (vx::bench::runTable(filter, quick ? 3 : 25) == 0) {
        std::fprintf(stderr, "No row's name holds \"%s\".\n", filter.c_str());
        return 1;
    }
    std::puts(
        "\"ours\" is the ratio to the limit's time, or what is over it (+), or a measured value with its "
        "unit; medians over rounds that measure all candidates, with their quartiles.");
    return 0;
}

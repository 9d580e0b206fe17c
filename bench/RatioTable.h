// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <limits>
#include <string>
#include <utility>
#include <vector>

/// Rows of one table, registered by the files that measure them:
///
///     const bool registered = vx::bench::addRow({.name = "box, 24 vertices", .limit = raw, .ours = ours,
///                                                .must = 1.03, .aim = 1.00});
namespace vx::bench {

constexpr double None = std::numeric_limits<double>::quiet_NaN();

/// What Google Benchmark runs: set-up, then `for (auto _ : state)` around the work, one unit of it per pass.
/// `state.SkipWithError` takes the row out of the table with that text.
using Work = std::function<void(benchmark::State& state)>;

struct Row {
    std::string name;
    Work limit; ///< the fastest way known
    Work ours;
    std::vector<std::pair<std::string, Work>> peers = {};
    double must = None; ///< largest ratio to the limit that will do
    double aim = None;
    bool inMicroseconds = false; ///< `must` and `aim` are microseconds over the limit's time, not ratios
};

/// What is not a time of work: a deviation, a count, a size.
struct Reading {
    double ours = None;
    double limit = None;
    std::vector<std::pair<std::string, double>> peers = {};
    std::string failure = {}; ///< why there is no value
};

/// What of a reading is held against `must` and `aim`: its own value, that over the limit's, or the
/// difference.
enum class Against { itself, ratio, excess };

struct ReadingRow {
    std::string name;
    std::string unit;
    std::function<Reading()> read;
    double must = None; ///< largest that will do; in `unit`, but for a ratio
    double aim = None;
    Against against = Against::itself;
};

/// Both return true, so that a file-scope constant can call them.
bool addRow(Row row);
bool addReading(ReadingRow row);

/// Runs the rows whose name holds `filter`, all candidates of a row in each round, and prints the table: the
/// medians of what each round gave, and the quartiles of ours. Returns how many rows there were.
int runTable(const std::string& filter, int rounds);

} // namespace vx::bench

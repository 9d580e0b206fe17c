// SPDX-License-Identifier: MIT
#include <bench/RatioTable.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>

namespace vx::bench {

namespace {

std::vector<Row>& rows() {
    static std::vector<Row> all;
    return all;
}

std::vector<ReadingRow>& readings() {
    static std::vector<ReadingRow> all;
    return all;
}

// Why the run was given up, empty for one that was not. Google Benchmark 1.8 has other fields for it
// than 1.7.
template <class Run>
std::string failureOf(const Run& run) {
    if constexpr (requires { run.skip_message; })
        return run.skip_message;
    else
        return run.error_message;
}

// Keeps the nanoseconds of each round by the candidate's name.
class Collector : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            if (const std::string reason = failureOf(run); !reason.empty())
                failure = reason;
            else if (run.run_type == Run::RT_Iteration)
                times[run.run_name.function_name].push_back(run.GetAdjustedRealTime());
        }
    }

    std::map<std::string, std::vector<double>> times;
    std::string failure;
};

double quantile(std::vector<double> values, double part) {
    if (values.empty())
        return None;
    std::sort(values.begin(), values.end());
    return values[std::size_t(part * double(values.size() - 1) + 0.5)];
}

std::string number(double value, const char* unit = "") {
    if (std::isnan(value))
        return "-";
    char text[32];
    std::snprintf(text, sizeof text, std::fabs(value) < 10 ? "%.2f%s" : "%.1f%s", value, unit);
    return text;
}

std::string verdict(double value, double must) {
    if (std::isnan(must))
        return "-";
    return value <= must ? "met" : "NOT MET";
}

void printLine(const char* name, const std::string& value, const std::string& limit,
               const std::string& spread, const std::string& must, const std::string& aim,
               const std::string& met, const std::string& peers) {
    std::printf("%-44s %12s %12s %10s %10s %10s  %-8s %s\n", name, value.c_str(), limit.c_str(),
                spread.c_str(), must.c_str(), aim.c_str(), met.c_str(), peers.c_str());
    std::fflush(stdout);
}

std::string duration(double nanoseconds) {
    if (nanoseconds < 1e3)
        return number(nanoseconds, " ns");
    return nanoseconds < 1e6 ? number(nanoseconds / 1e3, " us") : number(nanoseconds / 1e6, " ms");
}

// Nanoseconds of each candidate, round by round: what is compared was measured within the same moment, since
// a shared machine is fast and slow in phases. Every other round goes backwards.
Collector measure(const std::vector<std::pair<std::string, Work>>& candidates, int rounds) {
    Collector collector;
    for (int round = 0; round < rounds && collector.failure.empty(); ++round) {
        benchmark::ClearRegisteredBenchmarks();
        for (std::size_t place = 0; place < candidates.size(); ++place) {
            const auto& [name, work] = candidates[round % 2 ? candidates.size() - 1 - place : place];
            benchmark::RegisterBenchmark(name.c_str(), work)->UseRealTime();
        }
        benchmark::RunSpecifiedBenchmarks(&collector, ".*");
    }
    return collector;
}

void runRow(const Row& row, int rounds) {
    std::vector<std::pair<std::string, Work>> candidates = {{"limit", row.limit}, {"ours", row.ours}};
    candidates.insert(candidates.end(), row.peers.begin(), row.peers.end());
    const Collector collector = measure(candidates, rounds);
    if (!collector.failure.empty()) {
        printLine(row.name.c_str(), "-", "-", "-", "-", "-", "-", collector.failure);
        return;
    }

    const std::vector<double>& limit = collector.times.at("limit");
    const auto compared = [&](const std::string& name) {
        std::vector<double> values = collector.times.at(name);
        for (std::size_t round = 0; round < values.size(); ++round)
            values[round] =
                row.inMicroseconds ? (values[round] - limit[round]) / 1e3 : values[round] / limit[round];
        return values;
    };
    const char* unit = row.inMicroseconds ? " us" : "";
    std::string peers;
    for (const auto& [name, work] : row.peers)
        peers += name + " " + number(quantile(compared(name), 0.5), unit) + "  ";
    const std::vector<double> ours = compared("ours");
    const double value = quantile(ours, 0.5);
    const std::string spread = number(quantile(ours, 0.25)) + "-" + number(quantile(ours, 0.75));
    printLine(row.name.c_str(), (row.inMicroseconds ? "+" : "") + number(value, unit),
              duration(quantile(limit, 0.5)), spread, number(row.must, unit), number(row.aim, unit),
              verdict(value, row.must), peers);
}

void runReading(const ReadingRow& row) {
    const Reading reading = row.read();
    if (!reading.failure.empty()) {
        printLine(row.name.c_str(), "-", "-", "-", "-", "-", "-", reading.failure);
        return;
    }
    const std::string unit = " " + row.unit;
    std::string peers;
    for (const auto& [name, value] : reading.peers)
        peers += name + " " + number(value, unit.c_str()) + "  ";
    double held = reading.ours;
    const char* heldUnit = unit.c_str();
    if (row.against == Against::ratio) {
        held = reading.ours / reading.limit;
        heldUnit = "";
        peers += number(held, " of the limit");
    } else if (row.against == Against::excess) {
        held = reading.ours - reading.limit;
    }
    printLine(row.name.c_str(), number(reading.ours, unit.c_str()), number(reading.limit, unit.c_str()), "-",
              number(row.must, heldUnit), number(row.aim, heldUnit), verdict(held, row.must), peers);
}

} // namespace

bool addRow(Row row) {
    rows().push_back(std::move(row));
    return true;
}

bool addReading(ReadingRow row) {
    readings().push_back(std::move(row));
    return true;
}

int runTable(const std::string& filter, int rounds) {
    const auto chosen = [&](const std::string& name) { return name.find(filter) != std::string::npos; };
    printLine("row", "ours", "limit", "spread", "must", "aim", "met", "peers");
    int count = 0;
    for (const Row& row : rows()) {
        if (!chosen(row.name))
            continue;
        runRow(row, rounds);
        ++count;
    }
    for (const ReadingRow& row : readings()) {
        if (!chosen(row.name))
            continue;
        runReading(row);
        ++count;
    }
    return count;
}

} // namespace vx::bench

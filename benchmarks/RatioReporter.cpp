// SPDX-License-Identifier: Zlib
#include "RatioReporter.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace Bench {
namespace {

// Google Benchmark reports in the benchmark's own unit; the table works in nanoseconds.
double Nanoseconds(const benchmark::BenchmarkReporter::Run& run) {
    const double time = run.GetAdjustedRealTime();
    switch (run.time_unit) {
    case benchmark::kSecond:
        return time * 1e9;
    case benchmark::kMillisecond:
        return time * 1e6;
    case benchmark::kMicrosecond:
        return time * 1e3;
    case benchmark::kNanosecond:
        break;
    }
    return time;
}

} // namespace

RatioReporter::RatioReporter(std::vector<Pair> pairs, std::vector<std::string> notes)
    : pairs(std::move(pairs))
    , notes(std::move(notes)) {}

bool RatioReporter::ReportContext(const Context& context) {
    std::printf("%d CPUs at %.0f MHz; each figure is the median of the repetitions, which run in "
                "random order, floor and library side by side.\n",
                context.cpu_info.num_cpus, context.cpu_info.cycles_per_second / 1e6);
    return true;
}

void RatioReporter::ReportRuns(const std::vector<Run>& runs) {
    for (const Run& run : runs) {
        if (run.run_type != Run::RT_Aggregate || run.error_occurred)
            continue;
        if (run.aggregate_name == "median")
            medians[run.run_name.function_name] = Nanoseconds(run);
        else if (run.aggregate_name == "cv")
            spreads[run.run_name.function_name] = run.real_accumulated_time;
    }
}

void RatioReporter::Finalize() {
    std::printf("\n%-34s %13s %13s %7s %7s %7s\n", "hot path", "floor", "library", "ratio",
                "target", "cv");
    for (const Pair& pair : pairs) {
        const auto floor = medians.find("floor:" + pair.name);
        const auto library = medians.find("library:" + pair.name);
        if (floor == medians.end() || library == medians.end()) {
            std::printf("%-34s not measured\n", pair.name.c_str());
            continue;
        }
        const double ratio = library->second / floor->second;
        char target[16] = "";
        if (pair.target > 0)
            std::snprintf(target, sizeof target, "%.2f", pair.target);
        const bool met = pair.target <= 0 || ratio <= pair.target;
        allMet = allMet && met;
        const double spread =
            std::max(spreads["floor:" + pair.name], spreads["library:" + pair.name]);
        std::printf("%-34s %8.1f %-4s %8.1f %-4s %7.2f %7s %6.0f%%%s\n", pair.name.c_str(),
                    floor->second / pair.perItem, pair.unit, library->second / pair.perItem,
                    pair.unit, ratio, target, spread * 100, met ? "" : "  MISSED");
    }
    if (!notes.empty())
        std::printf("\n");
    for (const std::string& note : notes)
        std::printf("%s\n", note.c_str());
}

} // namespace Bench

// SPDX-License-Identifier: Zlib
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace Bench {

/// One line of the table: a hot path measured as "floor:<name>" and "library:<name>".
struct Pair {
    std::string name;
    double perItem; // the measured time is divided by this before it is shown
    const char* unit;
    double target; // the highest ratio accepted; 0 for none
};

/// Collects the median of each benchmark's repetitions and, at the end, prints every hot path as
/// a ratio of the library's median to its floor's median, both taken in the same run.
class RatioReporter : public benchmark::BenchmarkReporter {
public:
    RatioReporter(std::vector<Pair> pairs, std::vector<std::string> notes);

    bool ReportContext(const Context& context) override;
    void ReportRuns(const std::vector<Run>& runs) override;
    void Finalize() override;

    /// True when every pair was measured and met its target.
    bool AllMet() const { return allMet; }

private:
    std::vector<Pair> pairs;
    std::vector<std::string> notes;
    std::map<std::string, double> medians; // by benchmark name, in nanoseconds
    std::map<std::string, double> spreads; // coefficient of variation over the repetitions
    bool allMet = true;
};

} // namespace Bench

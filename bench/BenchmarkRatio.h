#pragma once

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

// Prints the usual table and remembers each benchmark's rate, so a run can end with the ratios that
// matter (a piece of the program against the floor it is measured by).
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            // With repetitions the median stands for the benchmark; single runs stand for themselves.
            if (run.run_type == Run::RT_Aggregate && run.aggregate_name != "median") {
                continue;
            }
            const auto bytes = run.counters.find("bytes_per_second");
            if (bytes != run.counters.end()) {
                rates[run.run_name.function_name] = bytes->second.value;
            }
            times[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }

    // "name: rate MB/s" for each, then the ratio of the first to the second.
    void printRates(const std::string& measured, const std::string& floor) const {
        const auto m = rates.find(measured);
        const auto f = rates.find(floor);
        if (m == rates.end() || f == rates.end()) {
            return;
        }
        std::printf("\n%-28s %10.1f MB/s\n%-28s %10.1f MB/s\nratio %s / %s: %.3f\n", measured.c_str(),
                    m->second / 1e6, floor.c_str(), f->second / 1e6, measured.c_str(), floor.c_str(),
                    m->second / f->second);
    }

    // "name: time ms" for each, then the ratio of the first time to the second.
    void printTimes(const std::string& measured, const std::string& floor) const {
        const auto m = times.find(measured);
        const auto f = times.find(floor);
        if (m == times.end() || f == times.end()) {
            return;
        }
        // Times are in each benchmark's own unit; both here use the same one.
        std::printf("\n%-28s %10.2f\n%-28s %10.2f\nratio %s / %s: %.2f\n", measured.c_str(), m->second,
                    floor.c_str(), f->second, measured.c_str(), floor.c_str(), m->second / f->second);
    }

    std::map<std::string, double> rates;
    std::map<std::string, double> times;
};

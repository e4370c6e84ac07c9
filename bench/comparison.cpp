#include "bench/comparison.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <map>
#include <vector>

namespace vantor::bench {
namespace {

struct Note {
    std::string what;
    double value;
    std::string unit;
    double most;
};

std::vector<Comparison>& comparisons() {
    static std::vector<Comparison> all;
    return all;
}

std::vector<Note>& notes() {
    static std::vector<Note> all;
    return all;
}

constexpr int kRepetitions = 15;

void enlist(const std::string& name, const std::function<void()>& prepare,
            const std::function<void()>& work) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [prepare, work](benchmark::State& state) {
                                     for (auto step : state) {
                                         static_cast<void>(step);
                                         if (prepare)
                                             prepare();
                                         const auto start = std::chrono::steady_clock::now();
                                         work();
                                         const std::chrono::duration<double> time =
                                             std::chrono::steady_clock::now() - start;
                                         state.SetIterationTime(time.count());
                                     }
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->MinTime(0.05)
        ->Repetitions(kRepetitions);
}

// Keeps the median of every benchmark, in milliseconds.
class MedianReporter final : public benchmark::BenchmarkReporter {
public:
    bool ReportContext(const Context&) override { return true; }
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const auto& run : runs) {
            if (run.aggregate_name == "median")
                m_medians[run.run_name.function_name] = run.GetAdjustedRealTime();
        }
    }

    [[nodiscard]] double median(const std::string& name) const {
        const auto found = m_medians.find(name);
        return found == m_medians.end() ? 0 : found->second;
    }

private:
    std::map<std::string, double> m_medians;
};

} // namespace

void compare(const Comparison& comparison, const std::function<void()>& measured,
             const std::function<void()>& baseline) {
    compare(comparison, nullptr, measured, baseline);
}

void compare(const Comparison& comparison, const std::function<void()>& prepare,
             const std::function<void()>& measured, const std::function<void()>& baseline) {
    comparisons().push_back(comparison);
    enlist(comparison.measure, prepare, measured);
    enlist(comparison.measure + "/baseline", prepare, baseline);
}

void note(const std::string& what, double value, const std::string& unit, double most) {
    notes().push_back({what, value, unit, most});
}

bool runComparisons() {
    MedianReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    bool allReached = true;
    std::printf("%-44s %10s  %-44s %10s %7s %7s\n", "measure", "ms", "beside", "ms", "ratio", "most");
    for (const auto& each : comparisons()) {
        const double measured = reporter.median(each.measure);
        const double baseline = reporter.median(each.measure + "/baseline");
        const double ratio = baseline > 0 ? measured / baseline : 0;
        const bool reached = ratio > 0 && ratio <= each.mostRatio;
        allReached = allReached && reached;
        std::printf("%-44s %10.3f  %-44s %10.3f %7.2f %7.2f%s\n", each.measure.c_str(), measured,
                    each.baseline.c_str(), baseline, ratio, each.mostRatio, reached ? "" : "  MISSED");
    }
    for (const auto& each : notes()) {
        const bool reached = each.value <= each.most;
        allReached = allReached && reached;
        std::printf("%-100s %10.2f %s (most %.2f)%s\n", each.what.c_str(), each.value, each.unit.c_str(),
                    each.most, reached ? "" : "  MISSED");
    }
    return allReached;
}

} // namespace vantor::bench

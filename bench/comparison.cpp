#include "bench/comparison.h"

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <utility>
#include <vector>

#include "bench/stopwatch.h"

namespace vantor::bench {
namespace {

// Odd, so that one of the quotients is the median.
constexpr int kPairs = 25;
// A sample repeats its work until it takes as long as this, beside which looking at the clock is nothing.
constexpr double kLeastSample = 0.02;

struct Work {
    Comparison comparison;
    std::function<void()> prepare;
    std::function<void()> measured;
    std::function<void()> baseline;
};

struct Note {
    std::string what;
    double value;
    std::string unit;
    double most;
};

std::vector<Work>& works() {
    static std::vector<Work> all;
    return all;
}

std::vector<Note>& notes() {
    static std::vector<Note> all;
    return all;
}

double processorSeconds() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

double secondsOf(Uses uses, int times, const std::function<void()>& work) {
    const Stopwatch watch;
    const double before = processorSeconds();
    for (int i = 0; i < times; ++i)
        work();
    return (uses == Uses::Disk ? watch.seconds() : processorSeconds() - before) / times;
}

// One side of a comparison; work that is prepared runs once a sample.
class Side {
public:
    Side(const Work& work, const std::function<void()>& timed) : m_work(work), m_timed(timed) {
        // The first run also warms up.
        const double once = sample();
        if (!work.prepare)
            m_times = static_cast<int>(std::clamp(kLeastSample / std::max(once, 1e-9), 1.0, 1e6));
    }

    double sample() {
        if (m_work.prepare)
            m_work.prepare();
        m_samples.push_back(secondsOf(m_work.comparison.uses, m_times, m_timed));
        return m_samples.back();
    }

    [[nodiscard]] const std::vector<double>& samples() const { return m_samples; }

private:
    const Work& m_work;
    const std::function<void()>& m_timed;
    int m_times = 1;
    std::vector<double> m_samples;
};

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::ranges::nth_element(values, middle);
    return *middle;
}

bool run(const Work& work) {
    Side measured(work, work.measured);
    Side baseline(work, work.baseline);
    std::vector<double> ratios;
    for (int pair = 0; pair < kPairs; ++pair) {
        // Each goes first in turn: what one leaves behind meets the other as often.
        const double early = pair % 2 == 0 ? measured.sample() : baseline.sample();
        const double late = pair % 2 == 0 ? baseline.sample() : measured.sample();
        ratios.push_back(pair % 2 == 0 ? early / late : late / early);
    }
    const double ratio = median(ratios);
    const auto& of = work.comparison;
    const bool reached = ratio <= of.mostRatio;
    std::printf("%-44s %10.3f  %-44s %10.3f %7.2f %7.2f%s\n", of.measure.c_str(),
                median(measured.samples()) * 1e3, of.baseline.c_str(), median(baseline.samples()) * 1e3,
                ratio, of.mostRatio, reached ? "" : "  MISSED");
    std::fflush(stdout);
    return reached;
}

} // namespace

void compare(const Comparison& comparison, std::function<void()> measured, std::function<void()> baseline) {
    compare(comparison, nullptr, std::move(measured), std::move(baseline));
}

void compare(const Comparison& comparison, std::function<void()> prepare, std::function<void()> measured,
             std::function<void()> baseline) {
    works().push_back({comparison, std::move(prepare), std::move(measured), std::move(baseline)});
}

void note(const std::string& what, double value, const std::string& unit, double most) {
    notes().push_back({what, value, unit, most});
}

bool runComparisons(const std::string& part) {
    bool allReached = true;
    std::printf("%-44s %10s  %-44s %10s %7s %7s\n", "measure", "ms", "beside", "ms", "ratio", "most");
    for (const auto& each : works()) {
        if (each.comparison.measure.find(part) != std::string::npos)
            allReached = run(each) && allReached;
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

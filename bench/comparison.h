// Comparisons: what is measured beside what, and how much longer it may take.
//
// A measure and its baseline are two benchmarks, named "<measure>" and "<measure>/baseline", that run in turn
// within one process; their medians are divided. Figures that are no times are added as they are found.
#pragma once

#include <functional>
#include <string>

namespace vantor::bench {

struct Comparison {
    std::string measure;
    std::string baseline;
    double mostRatio;
};

// To be called before the benchmarks run.
void compare(const Comparison& comparison, const std::function<void()>& measured,
             const std::function<void()>& baseline);

// The same for work that needs something made anew, untimed, before each run.
void compare(const Comparison& comparison, const std::function<void()>& prepare,
             const std::function<void()>& measured, const std::function<void()>& baseline);

// A figure with its limit, for the table.
void note(const std::string& what, double value, const std::string& unit, double most);

// Runs everything, prints the table, and is false when something missed its limit.
bool runComparisons();

} // namespace vantor::bench

// Comparisons: what is measured beside what, and how much longer it may take.
//
// A measure and its baseline run in turn within one process, in many pairs. The quotient of each pair is taken by
// itself and the median of them is judged, so that what slows the machine for a while slows both sides of a pair. Work
// without a disk is measured by the processor's time, other work by a Stopwatch. Figures that are no times are added as
// they are found.
#pragma once

#include <functional>
#include <string>

namespace vantor::bench {

enum class Uses { Processor, Disk };

struct Comparison {
    std::string measure;
    std::string baseline;
    double mostRatio;
    Uses uses = Uses::Processor;
};

// To be called before the comparisons run.
void compare(const Comparison& comparison, std::function<void()> measured, std::function<void()> baseline);

// The same for work that needs something made anew, unmeasured, before each run.
void compare(const Comparison& comparison, std::function<void()> prepare, std::function<void()> measured,
             std::function<void()> baseline);

// A figure with its limit, for the table.
void note(const std::string& what, double value, const std::string& unit, double most);

// Runs everything whose name contains `part`, prints the table, and is false when something missed its limit.
bool runComparisons(const std::string& part);

// Keeps the compiler from leaving out the work whose result this is.
template <typename Result>
void keep(const Result& result) {
    asm volatile("" : : "r"(&result) : "memory");
}

} // namespace vantor::bench

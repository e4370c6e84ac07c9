// Stopwatch: the time that the calling thread needed since it was made, in seconds: it worked or waited for a disk or
// another thread. What it waited for a processor that others used is left out, so that a busy machine does not look
// like slow work. A kernel that does not tell that wait leaves it in.
#pragma once

#include <chrono>
#include <cstdio>

namespace vantor::bench {

// What the calling thread has waited for a processor since it began, in seconds.
[[nodiscard]] inline double waitedForProcessor() {
    unsigned long long worked = 0;
    unsigned long long waited = 0;
    if (auto* const told = std::fopen("/proc/thread-self/schedstat", "r")) {
        if (std::fscanf(told, "%llu %llu", &worked, &waited) != 2)
            waited = 0;
        std::fclose(told);
    }
    return static_cast<double>(waited) / 1e9;
}

class Stopwatch {
public:
    [[nodiscard]] double seconds() const {
        const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - m_start;
        return passed.count() - (waitedForProcessor() - m_waited);
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    double m_waited = waitedForProcessor();
};

} // namespace vantor::bench

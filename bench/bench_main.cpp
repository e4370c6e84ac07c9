// vantor_bench: measures the product beside its baselines and holds it to its limits.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>

#include "bench/benches.h"
#include "bench/comparison.h"

int main(int argc, char** argv) {
    using namespace vantor::bench;
    // How the program starts itself to learn the memory of one export.
    if (argc == 4 && std::strcmp(argv[1], "--cards") == 0)
        return exportCards(std::strtoull(argv[2], nullptr, 10), argv[3]);

    benchmark::Initialize(&argc, argv);
    enlistCards(argv[0]);
    enlistStores();
    return runComparisons() ? EXIT_SUCCESS : EXIT_FAILURE;
}

// vantor_bench: measures the product beside its baselines and holds it to its limits.
//
//   vantor_bench [PART]      only what has this in its name

#include <cstdlib>
#include <cstring>

#include "bench/benches.h"
#include "bench/comparison.h"

int main(int argc, char** argv) {
    using namespace vantor::bench;
    // How the program starts itself to learn the memory of one export.
    if (argc == 4 && std::strcmp(argv[1], "--cards") == 0)
        return exportCards(std::strtoull(argv[2], nullptr, 10), argv[3]);

    enlistCards(argv[0]);
    enlistStores();
    return runComparisons(argc > 1 ? argv[1] : "") ? EXIT_SUCCESS : EXIT_FAILURE;
}

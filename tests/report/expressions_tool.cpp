// Compares the engine with the plain evaluator on many random expressions.
// usage: expressions_tool [COUNT [SEED]], by default ten million.
#include <cstdio>
#include <cstdlib>

#include "tests/report/RandomExpressions.h"

int main(int argc, char** argv) {
    const long count = argc > 1 ? std::atol(argv[1]) : 10000000;
    tessalink::test::ExpressionComparison comparison(argc > 2 ? std::strtoull(argv[2], nullptr, 10)
                                                              : 1);
    for (long i = 0; i < count; ++i) {
        const std::string difference = comparison.Step();
        if (difference.empty()) continue;
        std::printf("expression %ld: %s: %s\n", i, comparison.Expression().c_str(),
                    difference.c_str());
        return 1;
    }
    std::printf("%ld expressions agree, %d of them are faulty\n", count, comparison.Faults());
    return 0;
}

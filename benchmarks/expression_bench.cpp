// How fast expressions are evaluated, each in a @COMPUTE of its own: expressions a second.

#include <benchmark/benchmark.h>

#include "benchmarks/BenchText.h"
#include "report/FileParser.h"
#include "report/VarTable.h"

namespace {

constexpr int cExpressions = 10000;

void compute(benchmark::State& state, const char* expression) {
    std::string text;
    for (int i = 0; i < cExpressions; ++i)
        text.append("@COMPUTE(").append(expression).append(")\n");
    VarTable variables;
    variables.AddVar("Raw", 17);
    variables.AddVar("Mean", 50);
    variables.AddVar("T", 61.25);
    for (auto _ : state) {
        bench::TextFile source(text);
        CMemFile output(1 << 20);
        FileParser parser(source, output, variables, 0);
        ParseException fault;
        if (!parser.Parse(&fault)) state.SkipWithError(fault.what());
    }
    state.SetItemsProcessed(state.iterations() * cExpressions);
}

BENCHMARK_CAPTURE(compute, Numeral, "7");
BENCHMARK_CAPTURE(compute, Variable, "Raw");
BENCHMARK_CAPTURE(compute, Sum, "Raw*2+Mean");
BENCHMARK_CAPTURE(compute, Nested, "((Raw+Mean)*(Mean-Raw))/(1+Raw)");
BENCHMARK_CAPTURE(compute, Doubles, "50+10*(T-Mean)/9.5");
BENCHMARK_CAPTURE(compute, Logic, "Raw>10 & Raw<20 | ~(T=1.5)");

}  // namespace

// What finding and adding a variable costs, by the size of the table.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "report/VarTable.h"

namespace {

std::vector<std::string> variableNames(std::int64_t count) {
    std::vector<std::string> names;
    for (std::int64_t i = 0; i < count; ++i) names.push_back("Scale_" + std::to_string(i));
    return names;
}

void findVariable(benchmark::State& state) {
    const std::vector<std::string> names = variableNames(state.range(0));
    VarTable variables;
    for (const std::string& name : names) variables.AddVar(name.c_str(), 1);
    std::uint64_t next = 1;
    for (auto _ : state) {
        next = next * 6364136223846793005U + 1442695040888963407U;
        benchmark::DoNotOptimize(variables.Find(names[(next >> 33) % names.size()]));
    }
    state.SetItemsProcessed(state.iterations());
}

void addVariables(benchmark::State& state) {
    const std::vector<std::string> names = variableNames(state.range(0));
    for (auto _ : state) {
        VarTable variables;
        for (const std::string& name : names) variables.AddVar(name.c_str(), 1);
        benchmark::DoNotOptimize(variables.GetCount());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(findVariable)->RangeMultiplier(100)->Range(10, 1000000);
BENCHMARK(addVariables)->RangeMultiplier(100)->Range(10, 1000000);

}  // namespace

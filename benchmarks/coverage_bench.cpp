// What it costs to listen to a run: the conditions a second of a template that is made of them.

#include <benchmark/benchmark.h>

#include <memory>

#include "benchmarks/BenchText.h"
#include "report/FileParser.h"
#include "report/VarTable.h"
#include "report/coverage/ListenedParser.h"
#include "report/coverage/TemplateCoverage.h"

namespace {

constexpr int cConditions = 10000;

std::string conditions() {
    std::string text;
    for (int i = 0; i < cConditions; ++i) text += "@IF(Raw>10)@THEN high @ELSE low @ENDIF\n";
    return text;
}

template <class Run>
void runConditions(benchmark::State& state, const Run& run) {
    std::string text = conditions();
    VarTable variables;
    variables.AddVar("Raw", 17);
    for (auto _ : state) {
        bench::TextFile source(text);
        CMemFile output(1 << 20);
        run(source, output, variables);
    }
    state.SetItemsProcessed(state.iterations() * cConditions);
}

void alone(benchmark::State& state) {
    runConditions(state, [](CFile& source, CFile& output, VarTable& variables) {
        FileParser(source, output, variables, 0).Parse(nullptr);
    });
}

void listened(benchmark::State& state) {
    tessalink::TemplateCoverage coverage;
    std::string text = conditions();
    bench::TextFile file(text);
    coverage.AddTemplate(file, 0);
    runConditions(state, [&](CFile& source, CFile& output, VarTable& variables) {
        coverage.BeginReport();
        tessalink::ListenedParser<FileParser>(coverage, source, output, variables, 0)
            .Parse(nullptr);
    });
}

BENCHMARK(alone);
BENCHMARK(listened);

}  // namespace

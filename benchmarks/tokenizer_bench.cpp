// How fast templates are cut into tokens: bytes and tokens a second.

#include <benchmark/benchmark.h>

#include <iterator>

#include "benchmarks/BenchText.h"
#include "report/FileScanner.h"

namespace {

constexpr std::size_t cSize = 1 << 20;

void scanText(benchmark::State& state, std::string_view sample) {
    std::string text = bench::repeat(sample, cSize);
    std::int64_t tokens = 0;
    for (auto _ : state) {
        bench::TextFile file(text);
        FileScanner scanner(file, 0);
        while (scanner.NextText().GetKind() != Token::tkEnd) ++tokens;
    }
    state.SetBytesProcessed(state.iterations() * std::ssize(text));
    state.SetItemsProcessed(tokens);
}

void scanExpressions(benchmark::State& state, std::string_view sample) {
    std::string text = bench::repeat(sample, cSize);
    std::int64_t tokens = 0;
    for (auto _ : state) {
        bench::TextFile file(text);
        FileScanner scanner(file, 0);
        while (scanner.NextExp().GetKind() != Token::tkEnd) ++tokens;
    }
    state.SetBytesProcessed(state.iterations() * std::ssize(text));
    state.SetItemsProcessed(tokens);
}

BENCHMARK_CAPTURE(scanText, Plain,
                  "\\pard\\fs22 The client describes a calm and careful way of working with "
                  "others, and tends to plan.\\par\n");
BENCHMARK_CAPTURE(scanText, References, "@Name scored @T12, ");
BENCHMARK_CAPTURE(scanText, Keywords, "@LINK x@ENDIF y@ELSE z");
BENCHMARK_CAPTURE(scanExpressions, Names, "Raw12+Raw7*(Score-Mean) ");
BENCHMARK_CAPTURE(scanExpressions, Numerals, "12 <= 3.50 + 100 ");
BENCHMARK_CAPTURE(scanExpressions, Strings, "[above the average range] + ");

}  // namespace

// How fast RTF text is escaped and scaled: bytes a second.

#include <benchmark/benchmark.h>

#include "benchmarks/BenchText.h"
#include "report/RTFText.h"

namespace {

constexpr std::string_view cProse =
    "The client describes a calm and careful way of working with others, and plans ahead. ";
constexpr std::string_view cMarkup = "\\pard\\fs22\\li720\\fi-360{\\b a}\\tx1440 b\\par\n";

void encode(benchmark::State& state, std::string_view sample) {
    const CString text{bench::repeat(sample, 1 << 20)};
    for (auto _ : state) benchmark::DoNotOptimize(RTFEncode(text));
    state.SetBytesProcessed(state.iterations() * text.GetLength());
}

void scale(benchmark::State& state, std::string_view sample) {
    const CString text{bench::repeat(sample, 1 << 20)};
    for (auto _ : state) {
        CString scaled = text;
        ScaleRTFText(0.5, scaled);
        benchmark::DoNotOptimize(scaled.GetString());
    }
    state.SetBytesProcessed(state.iterations() * text.GetLength());
}

BENCHMARK_CAPTURE(encode, Prose, cProse);
BENCHMARK_CAPTURE(encode, Markup, cMarkup);
BENCHMARK_CAPTURE(scale, Prose, cProse);
BENCHMARK_CAPTURE(scale, Markup, cMarkup);

}  // namespace

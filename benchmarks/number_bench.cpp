// What writing a value as text costs.

#include <benchmark/benchmark.h>

#include "report/VariantVar.h"

namespace {

void variantText(benchmark::State& state, const VariantVar& value) {
    for (auto _ : state) {
        const tessalink::VariantText text(value);
        benchmark::DoNotOptimize(text.View().data());
    }
}

void variantString(benchmark::State& state, const VariantVar& value, int decimals, int width) {
    for (auto _ : state) benchmark::DoNotOptimize(value.GetAsStr(decimals, width));
}

BENCHMARK_CAPTURE(variantText, SmallInteger, VariantVar(7));
BENCHMARK_CAPTURE(variantText, LargeInteger, VariantVar(-2000000000));
BENCHMARK_CAPTURE(variantText, Score, VariantVar(61.25));
BENCHMARK_CAPTURE(variantText, HugeDouble, VariantVar(1e300));
BENCHMARK_CAPTURE(variantText, Text, VariantVar("above the average range"));
BENCHMARK_CAPTURE(variantString, IntegerField, VariantVar(7), 2, 8);
BENCHMARK_CAPTURE(variantString, DoubleField, VariantVar(61.25), 3, 10);

}  // namespace

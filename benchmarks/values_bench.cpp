// What scores, times, dates and fingerprints cost, a value each. Inputs vary, so that no branch is
// foreseen that a report would not foresee.

#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "core/Date.h"
#include "core/MD5Hash.h"
#include "core/Time.h"
#include "scores/Reliability.h"
#include "scores/ScoreScale.h"
#include "scores/StandardScores.h"

namespace {

using KOVStandardScores::PercentileRank;
using KOVStandardScores::Stanine;
using KOVStandardScores::ZScore;

constexpr std::size_t cInputs = 4096;

template <class Input, class Make>
std::vector<Input> inputs(Make&& make) {
    std::mt19937_64 engine(1);
    std::vector<Input> made;
    for (std::size_t i = 0; i < cInputs; ++i) made.push_back(make(engine));
    return made;
}

std::vector<double> deviates() {
    std::normal_distribution<double> normal;
    return inputs<double>([&](auto& engine) { return normal(engine); });
}

std::vector<double> ranks() {
    return inputs<double>(
        [](auto& engine) { return std::uniform_real_distribution<double>(0.01, 99.99)(engine); });
}

int below(std::mt19937_64& engine, int count) {
    return std::uniform_int_distribution<int>(0, count - 1)(engine);
}

std::vector<Time> times() {
    return inputs<Time>(
        [](auto& engine) { return Time(below(engine, 24), below(engine, 60), below(engine, 60)); });
}

std::vector<Date> dates() {
    return inputs<Date>([](auto& engine) {
        return Date(1920 + below(engine, 100), 1 + below(engine, 12), 1 + below(engine, 28));
    });
}

/// `make` of each input.
template <class Input, class Make>
auto mapped(const std::vector<Input>& all, Make&& make) {
    std::vector<decltype(make(all.front()))> made;
    made.reserve(all.size());
    for (const Input& one : all) made.push_back(make(one));
    return made;
}

/// Times `work` over the inputs; an item is one of them.
template <class Input, class Work>
void each(benchmark::State& state, const std::vector<Input>& all, Work&& work) {
    for (auto _ : state) {
        for (const Input& one : all) benchmark::DoNotOptimize(work(one));
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(all.size()));
}

// --- Scores ---

void stanineOfZ(benchmark::State& state) {
    each(state, deviates(), [](double z) { return Stanine(ZScore(z)); });
}

void rankOfZ(benchmark::State& state) {
    each(state, deviates(), [](double z) { return PercentileRank(ZScore(z)); });
}

void zOfRank(benchmark::State& state) {
    each(state, ranks(), [](double rank) { return PercentileRank(rank).GetAsZScore(); });
}

void iqOfZ(benchmark::State& state) {
    each(state, deviates(), [](double z) { return tessalink::IQScore(ZScore(z)); });
}

void rankForTables(benchmark::State& state) {
    each(state, ranks(), [](double rank) { return PercentileRank(rank).Format1(); });
}

void rankForTexts(benchmark::State& state) {
    each(state, ranks(), [](double rank) { return PercentileRank(rank).FormatLG(); });
}

void confidenceInterval(benchmark::State& state) {
    const tessalink::Reliability reliability(tessalink::cTScale, 0.9);
    each(state, deviates(),
         [&](double z) { return reliability.GetIntervalOfMeasurement(50 + 10 * z, 0.95); });
}

BENCHMARK(stanineOfZ);
BENCHMARK(rankOfZ);
BENCHMARK(zOfRank);
BENCHMARK(iqOfZ);
BENCHMARK(rankForTables);
BENCHMARK(rankForTexts);
BENCHMARK(confidenceInterval);

// --- Times ---

void setTime(benchmark::State& state) {
    each(state, mapped(times(), [](const Time& time) { return time.Get(); }),
         [](std::uint32_t hhmmss) { return Time(hhmmss); });
}

void setTimeText(benchmark::State& state) {
    each(state, mapped(times(), [](const Time& time) { return time.GetAsStr(0); }),
         [](const CString& text) { return Time(text); });
}

void timeText(benchmark::State& state) {
    each(state, times(), [](const Time& time) { return time.GetAsStr(0); });
}

void timeDifference(benchmark::State& state) {
    const Time noon(12, 0, 0);
    each(state, times(), [&](const Time& time) {
        int hours, minutes, seconds;
        time.Minus(noon, hours, minutes, seconds);
        return hours + minutes + seconds;
    });
}

BENCHMARK(setTime);
BENCHMARK(setTimeText);
BENCHMARK(timeText);
BENCHMARK(timeDifference);

// --- Dates ---

void setDate(benchmark::State& state) {
    each(state, mapped(dates(), [](const Date& date) { return date.Get(); }),
         [](std::uint32_t yyyymmdd) { return Date(yyyymmdd); });
}

void setDateUSText(benchmark::State& state) {
    each(state, mapped(dates(), [](const Date& date) { return date.GetAsUSStr(); }),
         [](const CString& text) { return Date(text); });
}

void setDateLocalText(benchmark::State& state) {
    each(state, mapped(dates(), [](const Date& date) { return date.GetAsLocalStr(); }),
         [](const CString& text) {
             Date date;
             return date.SetLocal(text);
         });
}

void dateLocalText(benchmark::State& state) {
    each(state, dates(), [](const Date& date) { return date.GetAsLocalStr(); });
}

void age(benchmark::State& state) {
    const Date test(2024, 2, 29);
    each(state, dates(), [&](const Date& birth) {
        int years, months, days;
        test.Minus(birth, years, months, days);
        return years + months + days;
    });
}

BENCHMARK(setDate);
BENCHMARK(setDateUSText);
BENCHMARK(setDateLocalText);
BENCHMARK(dateLocalText);
BENCHMARK(age);

// --- Fingerprints ---

void fingerprint(benchmark::State& state) {
    const std::string text(static_cast<std::size_t>(state.range(0)), 'x');
    unsigned char digest[16];
    for (auto _ : state) {
        benchmark::DoNotOptimize(MD5Hash::GetHash(text.c_str(), digest));
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * state.range(0));
}

BENCHMARK(fingerprint)->Arg(8)->Arg(32)->Arg(55)->Arg(56)->Arg(1 << 20);

}  // namespace

// A file of 100,000 cases: to open it, list it, search in it, key into it and delete from it.
#include <benchmark/benchmark.h>

#include <map>
#include <string>

#include "apps/desk/session/CaseFilter.h"
#include "apps/desk/session/CaseSession.h"
#include "benchmarks/LargeCaseFile.h"
#include "benchmarks/Latencies.h"

namespace {

using namespace tessalink;
using namespace tessalink::desk;

CaseIndex indexOf(CaseStore& store) {
    std::map<std::string, std::string> titles;
    for (const auto& questionnaire : store.Questionnaires()) {
        titles[questionnaire.hash] = questionnaire.title;
    }
    return {store.Summaries(), titles};
}

void openToFirstList(benchmark::State& state) {
    const std::string path = LargeCaseFile::Get().Path();
    for (auto _ : state) {
        CaseStore store = CaseStore::Open(path, {});
        CaseIndex index = indexOf(store);
        benchmark::DoNotOptimize(index.Find({}, {}));
    }
}

void searchAsYouType(benchmark::State& state) {
    CaseStore store = CaseStore::Open(LargeCaseFile::Get().Path(), {});
    CaseIndex index = indexOf(store);
    const std::string words = "patient 4711";
    std::size_t typed = 0;
    for (auto _ : state) {
        typed = typed % words.size() + 1;
        benchmark::DoNotOptimize(index.Find({words.substr(0, typed), {}, {}}, {}));
    }
}

void listAfterAChange(benchmark::State& state) {
    CaseStore store = CaseStore::Open(LargeCaseFile::Get().Path(), {});
    CaseIndex index = indexOf(store);
    CaseSummary summary = index.Cases()[4711];
    const CaseOrder order{CaseOrder::Column::Changed, true};
    benchmark::DoNotOptimize(index.Find({}, order));
    for (auto _ : state) {
        ++summary.changed;
        index.Update(summary);
        benchmark::DoNotOptimize(index.Find({}, order));
    }
}

void keyAnAnswer(benchmark::State& state) {
    CaseStore store = CaseStore::Open(LargeCaseFile::Get().Path(), {});
    CaseSession session(store, 4711);
    int count = 0;
    for (auto _ : state) {
        session.SetAnswer(static_cast<std::size_t>(count % cAnswers), 1 + (count / cAnswers) % 5);
        ++count;
        benchmark::DoNotOptimize(session.GetScores());
    }
}

/// As somebody keys fast, with pauses in which caches go cold.
void keyWithPauses(benchmark::State& state) {
    CaseStore store = CaseStore::Open(LargeCaseFile::Get().Path(), {});
    CaseSession session(store, 4713);
    Latencies latencies("case store");
    for (auto _ : state) {
        for (int i = 0; i < Latencies::cPacedKeys; ++i) {
            latencies.TimePaced([&] {
                session.SetAnswer(static_cast<std::size_t>(i % cAnswers), 1 + (i / cAnswers) % 5);
            });
        }
    }
    latencies.Report(state);
}

void keyAndSync(benchmark::State& state) {
    CaseStore store = CaseStore::Open(LargeCaseFile::Get().Path(), {});
    CaseSession session(store, 4712);
    int count = 0;
    for (auto _ : state) {
        session.SetAnswer(0, 1 + count++ % 5);
        store.Sync();
    }
}

void deleteACase(benchmark::State& state) {
    CaseStore store = CaseStore::Open(LargeCaseFile::Get().Path(), {});
    CaseId id = 90'000;
    for (auto _ : state) store.Delete(id++);
}

BENCHMARK(openToFirstList)->Unit(benchmark::kMillisecond);
BENCHMARK(searchAsYouType)->Unit(benchmark::kMillisecond);
BENCHMARK(listAfterAChange)->Unit(benchmark::kMillisecond);
BENCHMARK(keyAnAnswer)->Unit(benchmark::kMicrosecond);
BENCHMARK(keyWithPauses)->Arg(cCases)->Unit(benchmark::kSecond)->Iterations(1);
BENCHMARK(keyAndSync)->Unit(benchmark::kMillisecond);
BENCHMARK(deleteACase)->Unit(benchmark::kMillisecond)->Iterations(10);

}  // namespace

// What saving and loading a table of variables costs: bytes and variables a second.

#include <benchmark/benchmark.h>

#include <string>

#include "platform/files/CArchive.h"
#include "platform/files/CMemFile.h"
#include "report/VarTable.h"

namespace {

void fill(VarTable& variables, std::int64_t count) {
    for (std::int64_t i = 0; i < count; ++i) {
        const std::string name = "Scale_" + std::to_string(i);
        if (i % 2 == 0) {
            variables.AddVar(name.c_str(), 0.5 * static_cast<double>(i));
        } else {
            variables.AddVar(name.c_str(), "above the average range");
        }
    }
}

void store(VarTable& variables, CMemFile& file) {
    file.SeekToBegin();
    CArchive archive(&file, CArchive::store);
    variables.Serialize(archive);
    archive.Close();
}

void countWork(benchmark::State& state, CMemFile& file) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(file.GetLength()));
}

void save(benchmark::State& state) {
    VarTable variables;
    fill(variables, state.range(0));
    CMemFile file(1 << 20);
    for (auto _ : state) store(variables, file);
    countWork(state, file);
}

void load(benchmark::State& state) {
    VarTable variables;
    fill(variables, state.range(0));
    CMemFile file(1 << 20);
    store(variables, file);
    for (auto _ : state) {
        file.SeekToBegin();
        CArchive archive(&file, CArchive::load);
        VarTable loaded;
        loaded.Serialize(archive);
        benchmark::DoNotOptimize(loaded.GetCount());
    }
    countWork(state, file);
}

BENCHMARK(save)->Arg(100)->Arg(10000)->Arg(1000000);
BENCHMARK(load)->Arg(100)->Arg(10000)->Arg(1000000);

}  // namespace

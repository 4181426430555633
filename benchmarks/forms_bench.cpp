// From a key press to the finished paint of forms, with few and with many items: every key is timed
// by itself, in microseconds; and layout of many items. FORMS_LATENCY_LOG=FILE writes down each
// key.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/DataEntryCtl.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/FlowLayoutMgr.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr CRect cPlace(0, 0, 900, 500);
constexpr int cKeys = 20'000;

class Latencies {
public:
    template <class Key>
    void Time(Key&& key) {
        auto& system = tessalink::HeadlessSystem::Default();
        const auto painted = system.PaintedArea();
        const auto start = Clock::now();
        key();
        system.Pump();
        m_all.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
        m_pixels += static_cast<double>(system.PaintedArea() - painted);
        system.ToldEvents().clear();
    }
    void Report(benchmark::State& state) {
        if (const char* path = std::getenv("FORMS_LATENCY_LOG")) {
            std::ofstream log(path, std::ios::app);
            for (const double time : m_all) log << state.range(0) << '\t' << time << '\n';
        }
        state.counters["pixels"] = m_pixels / static_cast<double>(m_all.size());
        std::sort(m_all.begin(), m_all.end());
        state.counters["p50_us"] = at(0.5);
        state.counters["p99_us"] = at(0.99);
        state.counters["max_us"] = m_all.back();
    }

private:
    double at(double share) const {
        return m_all[static_cast<std::size_t>(share * static_cast<double>(m_all.size() - 1))];
    }

    std::vector<double> m_all;
    double m_pixels = 0;
};

enum class Kind { numbers, choices };

DataEntryItem* makeItem(Kind kind) {
    if (kind == Kind::numbers) return new FloatDataEntryItem("");
    return new IntegerDataEntryItem;
}
DataEntryItemUI* makeUI(Kind kind) {
    if (kind == Kind::numbers) return new FloatDataEntryUI(60, 5, 1, 0);
    return new RadioBtnItemUI("[never|1|1][seldom|2|2][often|3|3]", 60);
}

/// A form of items that share an interface, in a frame, with the focus, painted.
class Shown {
public:
    Shown(int items, Kind kind, DataEntryLayoutMgr* manager = new SingleColLayoutMgr)
        : m_form(manager) {
        DataEntryItemUI* ui = nullptr;
        for (int i = 0; i < items; ++i) {
            if (ui == nullptr) ui = makeUI(kind);
            m_form.AddItem(makeItem(kind), ui);
        }
        m_frame.Create("", cPlace);
        m_form.Create(cPlace, 1, &m_frame);
        m_form.SetFocus();
        tessalink::HeadlessSystem::Default().Pump();
    }
    // Before each of many keys: where the one before has not moved, it goes on at the first item.
    void StartAgainAtEnd() {
        if (m_form.GetCurrItemIdx() == m_before) m_form.SetCurrItem(0);
        tessalink::HeadlessSystem::Default().Pump();
        m_before = m_form.GetCurrItemIdx();
    }
    DataEntryCtl& Form() { return m_form; }

private:
    CFrameWnd m_frame;
    DataEntryCtl m_form;
    int m_before = -1;
};

// A digit, a digit, and Return, which keeps the number and goes on.
void numbers(benchmark::State& state) {
    Shown shown(static_cast<int>(state.range(0)), Kind::numbers);
    Latencies latencies;
    std::size_t number = 0;
    for (auto _ : state) {
        if (number % 3 == 0) shown.StartAgainAtEnd();
        const bool isDigit = ++number % 3 != 0;
        latencies.Time([&] {
            tessalink::HeadlessSystem::Default().PressKey(
                isDigit ? static_cast<UINT>('7') : VK_RETURN, isDigit ? "7" : "\r");
        });
    }
    latencies.Report(state);
}

// A key that chooses and goes on.
void choices(benchmark::State& state) {
    Shown shown(static_cast<int>(state.range(0)), Kind::choices);
    Latencies latencies;
    std::size_t number = 0;
    for (auto _ : state) {
        shown.StartAgainAtEnd();
        const std::string key(1, static_cast<char>('1' + number++ % 3));
        latencies.Time(
            [&] { tessalink::HeadlessSystem::Default().PressKey(static_cast<UINT>(key[0]), key); });
    }
    latencies.Report(state);
}

void moves(benchmark::State& state, UINT key) {
    Shown shown(static_cast<int>(state.range(0)), Kind::numbers, new FlowLayoutMgr(0));
    Latencies latencies;
    for (auto _ : state) {
        shown.StartAgainAtEnd();
        latencies.Time([&] { tessalink::HeadlessSystem::Default().PressKey(key); });
    }
    latencies.Report(state);
}
void downs(benchmark::State& state) {
    moves(state, VK_DOWN);
}
void pages(benchmark::State& state) {
    moves(state, VK_NEXT);
}

// A quarter of the height, up and down: only what comes into view is painted.
void scrolls(benchmark::State& state) {
    Shown shown(static_cast<int>(state.range(0)), Kind::numbers);
    Latencies latencies;
    std::size_t number = 0;
    for (auto _ : state) {
        const bool goesDown = number++ % 2 == 0;
        latencies.Time(
            [&] { shown.Form().SendMessage(WM_VSCROLL, goesDown ? SB_LINEDOWN : SB_LINEUP); });
    }
    latencies.Report(state);
}

void layouts(benchmark::State& state) {
    Shown shown(static_cast<int>(state.range(0)), Kind::numbers, new FlowLayoutMgr(0));
    for (auto _ : state) shown.Form().RecalcLayout();
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    benchmark->Arg(10)->Arg(1'000)->Arg(10'000)->Iterations(cKeys);
}

BENCHMARK(numbers)->Apply(sizes);
BENCHMARK(choices)->Apply(sizes);
BENCHMARK(downs)->Apply(sizes);
BENCHMARK(pages)->Apply(sizes);
BENCHMARK(scrolls)->Apply(sizes);
BENCHMARK(layouts)->Arg(1'000)->Arg(10'000)->Arg(100'000)->Unit(benchmark::kMicrosecond);

}  // namespace

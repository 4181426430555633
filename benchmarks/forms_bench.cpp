// From a key press to the finished paint of forms, with few and with many items: every key is timed
// by itself, in microseconds; and layout of many items.

#include <benchmark/benchmark.h>

#include <string>

#include "benchmarks/Latencies.h"
#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/DataEntryCtl.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/FlowLayoutMgr.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"

namespace {

constexpr CRect cPlace(0, 0, 900, 500);
constexpr int cKeys = 20'000;

/// The times of keys, and how many pixels they painted.
class Keys {
public:
    explicit Keys(const char* name) : m_latencies(name) {}

    template <class Key>
    void Time(Key&& key) {
        auto& system = tessalink::HeadlessSystem::Default();
        const auto painted = system.PaintedArea();
        m_latencies.Time([&] {
            key();
            system.Pump();
        });
        m_pixels += static_cast<double>(system.PaintedArea() - painted);
        system.ToldEvents().clear();
    }
    void Report(benchmark::State& state) {
        state.counters["pixels"] = m_pixels / static_cast<double>(m_latencies.Count());
        m_latencies.Report(state);
    }

private:
    tessalink::Latencies m_latencies;
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
    Keys keys("form numbers");
    std::size_t number = 0;
    for (auto _ : state) {
        if (number % 3 == 0) shown.StartAgainAtEnd();
        const bool isDigit = ++number % 3 != 0;
        keys.Time([&] {
            tessalink::HeadlessSystem::Default().PressKey(
                isDigit ? static_cast<UINT>('7') : VK_RETURN, isDigit ? "7" : "\r");
        });
    }
    keys.Report(state);
}

// A key that chooses and goes on.
void choices(benchmark::State& state) {
    Shown shown(static_cast<int>(state.range(0)), Kind::choices);
    Keys keys("form choices");
    std::size_t number = 0;
    for (auto _ : state) {
        shown.StartAgainAtEnd();
        const std::string key(1, static_cast<char>('1' + number++ % 3));
        keys.Time(
            [&] { tessalink::HeadlessSystem::Default().PressKey(static_cast<UINT>(key[0]), key); });
    }
    keys.Report(state);
}

void moves(benchmark::State& state, const char* name, UINT key) {
    Shown shown(static_cast<int>(state.range(0)), Kind::numbers, new FlowLayoutMgr(0));
    Keys keys(name);
    for (auto _ : state) {
        shown.StartAgainAtEnd();
        keys.Time([&] { tessalink::HeadlessSystem::Default().PressKey(key); });
    }
    keys.Report(state);
}
void downs(benchmark::State& state) {
    moves(state, "form downs", VK_DOWN);
}
void pages(benchmark::State& state) {
    moves(state, "form pages", VK_NEXT);
}

// A quarter of the height, up and down: only what comes into view is painted.
void scrolls(benchmark::State& state) {
    Shown shown(static_cast<int>(state.range(0)), Kind::numbers);
    Keys keys("form scrolls");
    std::size_t number = 0;
    for (auto _ : state) {
        const bool goesDown = number++ % 2 == 0;
        keys.Time(
            [&] { shown.Form().SendMessage(WM_VSCROLL, goesDown ? SB_LINEDOWN : SB_LINEUP); });
    }
    keys.Report(state);
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

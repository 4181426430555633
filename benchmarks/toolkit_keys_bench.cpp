// From a key event of the toolkit to the last pixel on its platform without a screen: lists and
// forms with few and with many items, every key by itself, at 20 a second. What is drawn is raster
// graphics as on a screen; the way from there to the glass is missing.

#include <benchmark/benchmark.h>

#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/Latencies.h"
#include "benchmarks/ToolkitKeys.h"
#include "dataentry/DataEntryCtl.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "platform/windows/CFrameWnd.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"

namespace {

using tessalink::Latencies;
using tessalink::press;
using tessalink::pressCharacter;
using tessalink::settle;

constexpr CRect cPlace(0, 0, 900, 500);

/// A window in a frame, with the focus, painted.
class Shown {
public:
    Shown() { m_frame.Create("", cPlace); }

    template <class Window>
    void Add(Window& window) {
        window.Create(cPlace, 1, &m_frame);
        window.SetFocus();
        settle();
        // Where the platform has not made the frame active, no widget has the focus.
        if (QApplication::focusWidget() == nullptr) {
            QApplication::setActiveWindow(QApplication::topLevelWidgets().constFirst());
            window.SetFocus();
            settle();
        }
    }

private:
    CFrameWnd m_frame;
};

// Digits, and Return after every two of them.
void keyNumbers(benchmark::State& state, const char* name) {
    Latencies latencies(name);
    std::size_t number = 0;
    for (auto _ : state) {
        const bool isDigit = ++number % 3 != 0;
        latencies.TimePaced(
            [&] { isDigit ? pressCharacter('7') : press(Qt::Key_Return, QStringLiteral("\r")); });
    }
    latencies.Report(state);
}

void answers(benchmark::State& state) {
    constexpr std::string_view cKeys = "15324";
    Shown shown;
    ItemListCtl list(static_cast<int>(state.range(0)),
                     "[never|1|1][seldom|2|2][sometimes|3|3][often|4|4][always|5|5]", -1);
    shown.Add(list);
    Latencies latencies("toolkit answers");
    std::size_t number = 0;
    for (auto _ : state) {
        latencies.TimePaced([&] { pressCharacter(cKeys[number++ % cKeys.size()]); });
    }
    if (list.GetCurrItemIdx() == 0) state.SkipWithError("no key arrived");
    latencies.Report(state);
}

void numbers(benchmark::State& state) {
    const std::vector<const char*> names(static_cast<std::size_t>(state.range(0)), "Openness");
    Shown shown;
    NumberListCtl list(static_cast<int>(state.range(0)), const_cast<const char**>(names.data()),
                       nullptr);
    shown.Add(list);
    keyNumbers(state, "toolkit numbers");
    if (list.GetCurrItemIdx() == 0) state.SkipWithError("no key arrived");
}

void form(benchmark::State& state) {
    Shown shown;
    DataEntryCtl form(new SingleColLayoutMgr);
    FloatDataEntryUI* ui = nullptr;
    for (int i = 0; i < state.range(0); ++i) {
        if (ui == nullptr) ui = new FloatDataEntryUI(60, 5, 1, 0);
        form.AddItem(new FloatDataEntryItem("Score"), ui);
    }
    shown.Add(form);
    keyNumbers(state, "toolkit form");
    if (form.GetCurrItemIdx() == 0) state.SkipWithError("no key arrived");
}

void sizes(benchmark::internal::Benchmark* benchmark, const std::vector<int>& items) {
    for (const int count : items) benchmark->Arg(count);
    benchmark->Iterations(Latencies::cPacedKeys)->UseRealTime();
}
void listSizes(benchmark::internal::Benchmark* benchmark) {
    sizes(benchmark, {100, 100'000});
}
void formSizes(benchmark::internal::Benchmark* benchmark) {
    sizes(benchmark, {10, 1'000, 10'000});
}

BENCHMARK(answers)->Apply(listSizes);
BENCHMARK(numbers)->Apply(listSizes);
BENCHMARK(form)->Apply(formSizes);

}  // namespace

int main(int argc, char** argv) {
    return tessalink::runToolkitBenchmarks(argc, argv);
}

// From a key press to the finished paint of lists, with few and with many items: every key is timed
// by itself. "Paced" keys come at 20 a second.

#include <benchmark/benchmark.h>

#include <vector>

#include "benchmarks/Latencies.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"

namespace {

using tessalink::Latencies;

constexpr const char* cDefinition = "[never|1|1][seldom|2|2][sometimes|3|3][often|4|4][always|5|5]";
constexpr CRect cPlace(0, 0, 900, 500);

/// A list in a frame, with the focus, painted.
template <class List>
class Shown {
public:
    template <class... Arguments>
    explicit Shown(Arguments... arguments) : m_list(arguments...) {
        m_frame.Create("", cPlace);
        m_list.Create(cPlace, 1, &m_frame);
        m_list.SetFocus();
        tessalink::HeadlessSystem::Default().Pump();
    }
    // The next of many keys; from the end of the list it goes on at its start.
    void Press(UINT key, const char* characters) {
        auto& system = tessalink::HeadlessSystem::Default();
        if (m_list.GetCurrItemIdx() == m_list.GetItemCount() - 1) system.PressKey(VK_HOME);
        system.PressKey(key, characters);
        system.Pump();
        system.ToldEvents().clear();
    }

private:
    CFrameWnd m_frame;
    List m_list;
};

void pressAnswer(Shown<ItemListCtl>& list, std::size_t number) {
    constexpr const char* cKeys[] = {"1", "5", "3", "2", "4"};
    const char* key = cKeys[number % std::size(cKeys)];
    list.Press(static_cast<UINT>(*key), key);
}

void answers(benchmark::State& state) {
    Shown<ItemListCtl> list(static_cast<int>(state.range(0)), cDefinition, -1);
    Latencies latencies("answers");
    std::size_t number = 0;
    for (auto _ : state) latencies.Time([&] { pressAnswer(list, number++); });
    latencies.Report(state);
}

void pacedAnswers(benchmark::State& state) {
    Shown<ItemListCtl> list(static_cast<int>(state.range(0)), cDefinition, -1);
    Latencies latencies("paced answers");
    std::size_t number = 0;
    for (auto _ : state) latencies.TimePaced([&] { pressAnswer(list, number++); });
    latencies.Report(state);
}

void pages(benchmark::State& state) {
    Shown<ItemListCtl> list(static_cast<int>(state.range(0)), cDefinition, 2);
    Latencies latencies("pages");
    for (auto _ : state) latencies.Time([&] { list.Press(VK_NEXT, ""); });
    latencies.Report(state);
}

// Two digits and Return.
void numbers(benchmark::State& state) {
    std::vector<const char*> names(static_cast<std::size_t>(state.range(0)), "Conscientiousness");
    Shown<NumberListCtl> list(static_cast<int>(state.range(0)), names.data(), nullptr);
    Latencies latencies("numbers");
    std::size_t number = 0;
    for (auto _ : state) {
        latencies.Time([&] {
            const bool isDigit = ++number % 3 != 0;
            list.Press(isDigit ? '7' : VK_RETURN, isDigit ? "7" : "\r");
        });
    }
    latencies.Report(state);
}

BENCHMARK(answers)->Arg(100)->Arg(100'000)->Iterations(100'000);
BENCHMARK(pages)->Arg(100)->Arg(100'000)->Iterations(20'000);
BENCHMARK(numbers)->Arg(100)->Arg(100'000)->Iterations(100'000);
BENCHMARK(pacedAnswers)->Arg(100)->Arg(100'000)->Iterations(Latencies::cPacedKeys)->UseRealTime();

}  // namespace

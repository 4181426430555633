// The desk's window with a file of 100,000 cases, on the toolkit's platform without a screen: from
// the name of the file to the painted list, from a letter of a search, and from an answer's key,
// to the last pixel. What is keyed is kept by the file before it is painted.
#include <benchmark/benchmark.h>

#include <QLineEdit>
#include <QSettings>
#include <QTemporaryDir>
#include <string_view>

#include "apps/desk/windows/MainWindow.h"
#include "benchmarks/LargeCaseFile.h"
#include "benchmarks/Latencies.h"
#include "benchmarks/ToolkitKeys.h"

namespace {

using namespace tessalink;
using namespace tessalink::desk;

/// A window whose settings are nobody's.
class Desk {
public:
    Desk() : m_settings(m_folder.filePath("settings"), QSettings::IniFormat), m_window(m_settings) {
        m_window.show();
        QApplication::setActiveWindow(&m_window);
        settle();
    }

    bool Open() {
        const bool isOpen = m_window.OpenFile(QString::fromStdString(LargeCaseFile::Get().Path()));
        settle();
        return isOpen;
    }
    MainWindow& Window() { return m_window; }

private:
    QTemporaryDir m_folder;
    QSettings m_settings;
    MainWindow m_window;
};

void openToPaintedList(benchmark::State& state) {
    LargeCaseFile::Get();
    for (auto _ : state) {
        state.PauseTiming();
        Desk desk;
        state.ResumeTiming();
        if (!desk.Open()) state.SkipWithError("the file does not open");
        state.PauseTiming();
        desk.Window().CloseFile();
        state.ResumeTiming();
    }
}

void searchLetter(benchmark::State& state) {
    constexpr std::string_view cWords = "patient 4711";
    Desk desk;
    desk.Open();
    auto* const search = desk.Window().findChild<QLineEdit*>("search");
    if (search == nullptr) return state.SkipWithError("there is no search");
    Latencies latencies("desk search");
    std::size_t typed = 0;
    for (auto _ : state) {
        if (typed % cWords.size() == 0) search->clear();
        search->setFocus();
        settle();
        latencies.Time([&] { pressCharacter(cWords[typed++ % cWords.size()]); });
    }
    latencies.Report(state);
}

void answerKey(benchmark::State& state) {
    constexpr std::string_view cKeys = "15324";
    Desk desk;
    desk.Open();
    CaseId id = 4711;
    Latencies latencies("desk answers");
    std::size_t number = 0;
    for (auto _ : state) {
        if (number % cAnswers == 0) {
            state.PauseTiming();
            desk.Window().OpenCase(id++);
            if (auto* const action = desk.Window().findChild<QAction*>("focusAnswers")) {
                action->trigger();
            }
            settle();
            state.ResumeTiming();
        }
        latencies.TimePaced(
            [&] { pressCharacter(cKeys[(number / cAnswers + number) % cKeys.size()]); });
        ++number;
    }
    if (!desk.Window().Session()->CanUndo()) state.SkipWithError("no key arrived");
    latencies.Report(state);
}

BENCHMARK(openToPaintedList)->Unit(benchmark::kMillisecond)->Iterations(10)->UseRealTime();
BENCHMARK(searchLetter)->Arg(cCases)->Iterations(120)->UseRealTime();
BENCHMARK(answerKey)->Arg(cCases)->Iterations(Latencies::cPacedKeys)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
    return tessalink::runToolkitBenchmarks(argc, argv);
}

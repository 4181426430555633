// From a key message of the platform to the end of painting: lists and forms with few and with many
// items, every key by itself, at 20 a second. Prints the median, the 99th percentile and the
// longest time in microseconds.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "dataentry/DataEntryCtl.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "platform/win32/UseWin32.h"
#include "platform/windows/CFrameWnd.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"
#include "tests/platform/win32/HostFrame.h"

namespace {

using tessalink::test::HostFrame;
using Clock = std::chrono::steady_clock;

constexpr CRect cPlace(0, 0, 900, 500);
constexpr int cKeys = 400;
constexpr auto cPause = std::chrono::milliseconds(50);

// A key to whatever has the focus, and all that follows, painting included.
void press(UINT key) {
    const HWND focus = ::GetFocus();
    ::PostMessageW(focus, WM_KEYDOWN, key, 1);
    ::PostMessageW(focus, WM_KEYUP, key, 1);
    HostFrame::PumpAll(nullptr);
    ::GdiFlush();
}

class Latencies {
public:
    void Time(UINT key) {
        std::this_thread::sleep_for(cPause);
        HostFrame::PumpAll(nullptr);
        const auto start = Clock::now();
        press(key);
        m_all.push_back(std::chrono::duration<double, std::micro>(Clock::now() - start).count());
    }
    void Report(const char* name, int items) {
        std::sort(m_all.begin(), m_all.end());
        const auto at = [&](double share) {
            return m_all[static_cast<std::size_t>(share * static_cast<double>(m_all.size() - 1))];
        };
        std::printf("%-10s %6d  p50 %7.0f  p99 %7.0f  max %7.0f\n", name, items, at(0.5), at(0.99),
                    m_all.back());
        std::fflush(stdout);
    }

private:
    std::vector<double> m_all;
};

// A window in a frame, with the focus, painted.
class Shown {
public:
    Shown() { m_frame.Create("", cPlace); }

    template <class Window>
    void Add(Window& window) {
        window.Create(cPlace, 1, &m_frame);
        window.SetFocus();
        HostFrame::PumpAll(nullptr);
    }

private:
    CFrameWnd m_frame;
};

void answers(int items) {
    constexpr std::string_view cAnswers = "15324";
    Shown shown;
    ItemListCtl list(items, "[never|1|1][seldom|2|2][sometimes|3|3][often|4|4][always|5|5]", -1);
    shown.Add(list);
    Latencies latencies;
    for (std::size_t i = 0; i < cKeys; ++i) {
        latencies.Time(static_cast<UINT>(cAnswers[i % cAnswers.size()]));
    }
    if (list.GetCurrItemIdx() == 0) std::printf("no key arrived\n");
    latencies.Report("answers", items);
}

// Digits, and Return after every two of them.
void keyNumbers(const char* name, int items) {
    Latencies latencies;
    for (int i = 1; i <= cKeys; ++i) latencies.Time(i % 3 != 0 ? UINT{'7'} : UINT{VK_RETURN});
    latencies.Report(name, items);
}

void numbers(int items) {
    const std::vector<const char*> names(static_cast<std::size_t>(items), "Openness");
    Shown shown;
    NumberListCtl list(items, const_cast<const char**>(names.data()), nullptr);
    shown.Add(list);
    keyNumbers("numbers", items);
    if (list.GetCurrItemIdx() == 0) std::printf("no key arrived\n");
}

void form(int items) {
    Shown shown;
    DataEntryCtl form(new SingleColLayoutMgr);
    FloatDataEntryUI* ui = nullptr;
    for (int i = 0; i < items; ++i) {
        if (ui == nullptr) ui = new FloatDataEntryUI(60, 5, 1, 0);
        form.AddItem(new FloatDataEntryItem("Score"), ui);
    }
    shown.Add(form);
    keyNumbers("form", items);
    if (form.GetCurrItemIdx() == 0) std::printf("no key arrived\n");
}

}  // namespace

int main() {
    tessalink::useWin32();
    for (const int items : {100, 100'000}) answers(items);
    for (const int items : {100, 100'000}) numbers(items);
    for (const int items : {10, 1'000, 10'000}) form(items);
    return 0;
}

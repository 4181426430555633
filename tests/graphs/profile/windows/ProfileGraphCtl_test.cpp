#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "graphs/profile/windows/ProfileGraphCtl.h"
#include "graphs/profile/windows/ProfileGraphCtl2.h"
#include "graphs/profile/windows/ProfileGraphCtl3.h"
#include "graphs/profile/windows/ProfileGraphCtl4.h"
#include "platform/graphics/RecordingDevice.h"
#include "platform/windows/CFrameWnd.h"
#include "tests/support/Dice.h"
#include "tests/support/GraphRun.h"
#include "tests/support/HeadlessWindows.h"

using tessalink::test::cMissing;
using tessalink::test::row;
using tessalink::test::Shown;
using tessalink::test::windows;

namespace {

const CRect cPlace(20, 30, 620, 430);

double* scores(std::initializer_list<double> values) {
    auto* array = new double[values.size()];
    std::copy(values.begin(), values.end(), array);
    return array;
}

TEST(ProfileGraphCtlFrames, ADestroyedWindowGetsNoTimer) {
    CFrameWnd host;
    host.Create("Host", CRect(0, 0, 800, 600));
    auto graph = std::make_unique<ProfileGraphCtl>(20, 80, 10, 0, 1, 0, 300, 200);
    graph->Create(cPlace, &host, 5, WS_CHILD | WS_VISIBLE, nullptr);
    windows().MoveMouse(cPlace.CenterPoint());
    graph.reset();
    windows().Advance(1000);
    windows().Pump();
}

TEST(ProfileGraphCtlFrames, ClicksActivateTheDocumentAndOnlyThatHasHints) {
    CMDIFrameWnd main;
    CMDIChildWnd first;
    CMDIChildWnd second;
    main.Create("Main", CRect(0, 0, 800, 600));
    first.Create("First", CRect(0, 0, 400, 500), &main);
    second.Create("Second", CRect(400, 0, 800, 500), &main);
    AfxSetMainWnd(&main);
    Shown<ProfileGraphCtl2> graph(20, 80, 10, 0, 1, 0, 300, 200);
    graph.SetXLegendPoints(1);
    graph.AddProfile("Anna", scores({30}), 0, 1, ProfileGraph2::PointType::Symbol, 0, 0);
    graph.Create(CRect(0, 0, 400, 400), &second, 1, WS_CHILD | WS_VISIBLE, "Graph");
    windows().Pump();
    const CPoint point = graph.ScreenPoint(1, 30);
    windows().MoveMouse(point);
    windows().Advance(1000);
    EXPECT_TRUE(graph.hints.empty()) << "the other document is active";
    windows().Press({410, 390}, WM_RBUTTONDOWN);
    windows().Release({410, 390}, WM_RBUTTONUP);
    EXPECT_EQ(main.MDIGetActive(), &second);
    EXPECT_EQ(CWnd::GetFocus(), &graph);
    windows().MoveMouse(point);
    windows().Advance(200);
    EXPECT_EQ(graph.hints, std::vector<std::string>{"1 = 30 (Anna)"});

    // The fourth one activates its document, and tells its points without hints.
    ProfileGraphCtl4 fourth(20, 80, 10, 0, 1, 0, 300, 200);
    fourth.SetXLegendPoints(2);
    for (const unsigned id : {1U, 2U}) {
        fourth.AddProfile(id == 1 ? "Anna" : "Ben", scores({cMissing, id == 1 ? cMissing : 40}), 0,
                          id, ProfileGraph3::PointType::Symbol, 0, 0);
    }
    fourth.Create(CRect(0, 0, 400, 400), &first, 1, WS_CHILD | WS_VISIBLE, "Fourth");
    windows().Pump();
    windows().Click({10, 350});
    EXPECT_EQ(main.MDIGetActive(), &first);
    windows().MoveMouse({200, 200});
    windows().PressKey(VK_DOWN);
    windows().Advance(1000);
    EXPECT_STREQ(windows().ToldEvents().back().text, "2 = 40 (Ben)");
    EXPECT_EQ(windows().ToldEvents().back().window, &fourth);
}

TEST(ProfileGraphCtl3Hooks, ChangeWhereAPointStandsAndWhatItsHintSays) {
    struct Doubled : Shown<ProfileGraphCtl3> {
        using Shown::Shown;
        double get_y_disp_val(int scale, ProfileInfo* profile) const override {
            return 2 * Shown::get_y_disp_val(scale, profile);
        }
        CString format_hint_value(ProfileInfo*, int, double value) const override {
            return tessalink::formatDouble(value, 0, 2) + " points";
        }
    };
    CFrameWnd host;
    host.Create("Host", CRect(0, 0, 800, 600));
    Doubled graph(0, 100, 10, 0, 1, 0, 300, 200);
    graph.SetXLegendPoints(2);
    graph.AddProfile("Anna", scores({30, 60}), 0, 1, ProfileGraph3::PointType::Symbol, 0, 0);
    graph.UseGt(1);
    graph.Create(cPlace, &host, 1, WS_CHILD | WS_VISIBLE, nullptr);
    windows().Pump();
    for (const auto& [scale, score] :
         {std::pair(1, 60.0), std::pair(2, 100.0), std::pair(1, 30.0)}) {
        windows().MoveMouse({cPlace.left, cPlace.top});
        windows().MoveMouse(graph.ScreenPoint(scale, score));
        windows().Advance(400);
    }
    // A legend below the plot stays where it is.
    graph.ShowLegend(ProfileGraph3::LegendType::Below);
    graph.Invalidate();
    windows().Pump();
    const CPoint grip = graph.ScreenLegend().TopLeft() + CSize(2, 2);
    windows().Press(grip);
    windows().MoveMouse({cPlace.left, cPlace.top});
    windows().Release({cPlace.left, cPlace.top});
    EXPECT_EQ(graph.LegendPercent(), CPoint(5, 5));
    EXPECT_EQ(graph.hints, (std::vector<std::string>{"1 = 60.00 points (Anna)",
                                                     "2 > 100.00 points (Anna)", "none"}));
}

// The texts that a window shows, from top to bottom.
std::vector<std::string> textsOf(CWnd& window) {
    tessalink::RecordingDevice device;
    windows().PaintAll(window, device);
    std::vector<std::string> texts;
    for (const auto& primitive : device.Primitives()) {
        if (!primitive.text.empty()) texts.emplace_back(primitive.text);
    }
    return texts;
}

TEST(ProfileGraphCtl4Texts, TitleTopTextsLegendsAndRewrittenScales) {
    CFrameWnd host;
    host.Create("Host", CRect(0, 0, 900, 700));
    ProfileGraphCtl4 graph(20, 80, 20, 0, 1, 0, 300, 200);
    graph.SetTitle("Big Five\nPerson 12");
    graph.SetXLegend(row({"Scales", "\\bWorry\\n and\nfear", "Hope", "\\iCalm"}));
    graph.ProfileGraph3::AddBand(40.0, 60.0, RGB(220, 235, 220), "Normal");
    graph.AddProfile("Anna", scores({30, 95, 40}), 0, 1, ProfileGraph3::PointType::Symbol, 0, 0);
    graph.AddTopLegend(1.5, "Group", 0);
    graph.SetTwoLineLegend(1);
    graph.SetBackgroundTicks(1);
    graph.SetUseLEonYAxis(0);
    graph.Create(CRect(0, 0, 500, 400), &host, 1, WS_CHILD | WS_VISIBLE, nullptr);
    struct {
        int contents;
        std::vector<std::string> shown;
        std::vector<std::string> hidden;
    } const cases[] = {{ProfileGraphCtl4::cNoLegend, {"Group"}, {"Anna", "Normal"}},
                       {ProfileGraphCtl4::cProfiles, {"Anna"}, {"Normal"}},
                       {ProfileGraphCtl4::cBands, {"Normal"}, {"Anna"}},
                       {ProfileGraphCtl4::cProfilesAndBands,
                        {"Big Five", "Person 12", "Group", "20", " 80", "\xB3", "Scales", "Worry",
                         " and", "fear", "Hope", "Calm", "Anna", "Normal"},
                        {" 20", "\xA3", "\\bWorry\\n and", "\\iCalm"}}};
    for (const auto& c : cases) {
        for (const int columns : {0, 1, 3}) {
            graph.SetBottomLegendStyle(c.contents, columns);
            const auto texts = textsOf(graph);
            const auto has = [&](const std::string& text) {
                return std::find(texts.begin(), texts.end(), text) != texts.end();
            };
            for (const auto& text : c.shown) EXPECT_TRUE(has(text)) << text;
            for (const auto& text : c.hidden) EXPECT_FALSE(has(text)) << text;
        }
    }
    EXPECT_EQ(graph.GetUsedTwoLinesForLegend(), 1);
    EXPECT_GT(graph.GetLastLineHeight(), 0);
    const double numbers[] = {1.5, 2, 3, 4};
    graph.UpdateXLegends(4, numbers);
    EXPECT_STREQ(graph.GetScaleText(1), "1.5");
    textsOf(graph);
    EXPECT_EQ(graph.GetUsedTwoLinesForLegend(), 0);
    EXPECT_THROW(graph.RemoveTopLegend(1), CInvalidArgException);
    graph.RemoveTopLegend(0);
}

TEST(ProfileGraphCtlModel, EveryWindow) {
    tessalink::test::runGraphs<tessalink::test::HeadlessDriver>(43);
}

constexpr int cMaxScales = 8;

TEST(ProfileGraphCtlRandom, AnyInputOnAnyGraph) {
    CFrameWnd host;
    host.Create("Host", CRect(0, 0, 900, 700));
    tessalink::test::Dice dice(4711);
    const auto below = [&dice](int count) {
        return static_cast<int>(dice.Below(static_cast<std::size_t>(count)));
    };
    for (int round = 0; round < 60; ++round) {
        Shown<ProfileGraphCtl3> graph(below(50), below(100), below(20), below(5), below(2),
                                      below(2), below(400), below(300));
        const int scaleCount = below(cMaxScales);
        graph.SetXLegendPoints(scaleCount);
        for (int i = below(4); i > 0; --i) {
            // A profile that is there before the scales has as many scores as these will be.
            auto* values = new double[cMaxScales];
            std::generate_n(values, cMaxScales,
                            [&] { return below(4) == 0 ? cMissing : below(120); });
            graph.AddProfile("P", values, 0, static_cast<unsigned>(i),
                             ProfileGraph3::PointType::SymbolAndValue, 0, 0);
        }
        graph.Create(cPlace, &host, 1, WS_CHILD | WS_VISIBLE, nullptr);
        for (int step = 0; step < 60; ++step) {
            const CPoint point(below(800), below(600));
            switch (below(6)) {
                case 0:
                    windows().Click(point);
                    break;
                case 1:
                    windows().PressKey(VK_LEFT + static_cast<UINT>(below(4)));
                    break;
                case 2:
                    graph.MoveWindow(CRect(0, 0, below(700), below(500)));
                    break;
                case 3:
                    graph.SetXLegendPoints(below(cMaxScales));
                    break;
                default:
                    windows().MoveMouse(point);
            }
            windows().Advance(static_cast<UINT>(below(500)));
            windows().Pump();
        }
    }
}

}  // namespace

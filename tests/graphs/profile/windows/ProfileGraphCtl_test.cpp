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
#include "platform/windows/HeadlessSystem.h"
#include "tests/support/Dice.h"
#include "tests/support/GraphRun.h"

using tessalink::HeadlessSystem;
using tessalink::test::cMissing;
using tessalink::test::row;
using tessalink::test::Shown;

namespace {

const CRect cPlace(20, 30, 620, 430);

HeadlessSystem& windows() {
    return HeadlessSystem::Default();
}

double* scores(std::initializer_list<double> values) {
    auto* array = new double[values.size()];
    std::copy(values.begin(), values.end(), array);
    return array;
}

class ProfileGraphCtlTest : public testing::Test {
protected:
    ProfileGraphCtlTest() {
        m_host.Create("Host", CRect(0, 0, 800, 600));
        m_graph = std::make_unique<Shown<ProfileGraphCtl>>(20, 80, 10, 0, 1, 0, 300, 200);
        m_graph->SetXLegend(row({"", "Worry", "Hope", "Calm"}), nullptr, nullptr, nullptr);
        m_graph->AddProfile("Anna", scores({30, 95, cMissing}), 0, 1);
        m_graph->AddProfile("Ben", scores({50, 60, 40.25}), 255, 2);
        m_graph->Create(cPlace, &m_host, 5, WS_CHILD | WS_VISIBLE, nullptr);
        windows().Pump();
    }

    // Rests on a point for so many periods of the timer.
    void rest(CPoint point, int periods) {
        windows().MoveMouse(point);
        windows().Advance(static_cast<UINT>(periods) * 200);
    }

    CFrameWnd m_host;
    std::unique_ptr<Shown<ProfileGraphCtl>> m_graph;
};

TEST_F(ProfileGraphCtlTest, HintsWaitForOneWholePeriodOfRest) {
    const CPoint point = m_graph->ScreenPoint(1, 30);
    windows().MoveMouse(point);
    windows().Advance(199);
    EXPECT_TRUE(m_graph->hints.empty());
    windows().Advance(1);
    EXPECT_EQ(m_graph->hints, std::vector<std::string>{"Worry = 30 (Anna)"});
    windows().Advance(2000);
    EXPECT_EQ(m_graph->hints.size(), 1U) << "the timer goes on";

    // A move shortly before the period is over counts as one: two ticks are needed.
    windows().MoveMouse({point.x + 1, point.y});
    windows().Advance(150);
    windows().MoveMouse(point);
    windows().Advance(50);
    EXPECT_EQ(m_graph->hints.size(), 1U);
    windows().Advance(200);
    EXPECT_EQ(m_graph->hints.size(), 2U);

    // Off the window there are none.
    windows().MoveMouse({point.x + 1, point.y});
    windows().MoveMouse({790, 590});
    windows().Advance(1000);
    EXPECT_EQ(m_graph->hints.size(), 2U);
}

TEST_F(ProfileGraphCtlTest, HintTexts) {
    const int r = m_graph->Radius();
    struct {
        int scale;
        double score;
        CPoint offset;
        int flags;  // 1: >=, 2: <=
        const char* format;
        const char* hint;
    } const cases[] = {
        {1, 30, {0, 0}, 0, "%1 %2 %3 (%4)", "Worry = 30.0 (Anna)"},
        {1, 30, {r, -r}, 0, "%1 %2 %3 (%4)", "Worry = 30.0 (Anna)"},
        {1, 30, {r + 1, 0}, 0, "%1 %2 %3 (%4)", "none"},
        {1, 30, {0, r + 1}, 0, "%1 %2 %3 (%4)", "none"},
        {2, 95, {0, 0}, 0, "%3", "95.0"},
        {2, 95, {0, 0}, 1, "%2 %3", ">= 80.0"},
        {2, 95, {0, 0}, 2, "%2 %3", "= 95.0"},
        {3, 40.25, {0, 0}, 3, "%4: %3 %5 %", "Ben: 40.2 %5 %"},
        {3, 20, {0, 0}, 0, "%3", "none"},
    };
    m_graph->SetDecPlaces(1);
    for (const auto& c : cases) {
        m_graph->UseGe(c.flags & 1);
        m_graph->UseLe(c.flags & 2);
        m_graph->SetHintFormat(c.format);
        CPoint point = m_graph->ScreenPoint(c.scale, c.score) + CSize(c.offset.x, c.offset.y);
        m_graph->ScreenToClient(&point);
        CString text;
        m_graph->OnHint(text, point);
        EXPECT_EQ(m_graph->hints.back(), c.hint) << c.scale << " " << c.score << " " << c.flags;
    }
    m_graph->UseToolTips(0);
    m_graph->hints.clear();
    rest(m_graph->ScreenPoint(1, 30), 3);
    EXPECT_TRUE(m_graph->hints.empty());
}

TEST_F(ProfileGraphCtlTest, TheLegendIsDraggedAndKeepsItsPlace) {
    const CPoint grip = m_graph->ScreenLegend().TopLeft() + CSize(2, 2);
    const CRect plot = m_graph->Plot();
    windows().Queue([&] { windows().MoveMouse(grip + CSize(plot.Width() / 4, 40)); });
    windows().Queue([&] { windows().Release(grip + CSize(plot.Width() / 2, plot.Height() / 5)); });
    windows().Press(grip);
    EXPECT_NEAR(m_graph->LegendPercent().x, 55, 1);
    EXPECT_NEAR(m_graph->LegendPercent().y, 25, 1);
    const CRect dragged = m_graph->ScreenLegend();
    windows().Pump();
    EXPECT_NEAR(m_graph->ScreenLegend().left, dragged.left, plot.Width() / 100.0 + 1);

    // Escape gives up.
    windows().Queue([&] { windows().MoveMouse({100, 100}); });
    windows().Queue([&] { windows().PressKey(VK_ESCAPE); });
    const CPoint before = m_graph->LegendPercent();
    windows().Press(m_graph->ScreenLegend().TopLeft());
    EXPECT_EQ(m_graph->LegendPercent(), before);
    windows().Release({0, 0});
}

TEST_F(ProfileGraphCtlTest, ArrowsGoFromPointToPointAndTheHintIsSpoken) {
    struct {
        UINT key;
        const char* spoken;
    } const cases[] = {{VK_RIGHT, "Worry = 30 (Anna)"}, {VK_RIGHT, "Hope = 95 (Anna)"},
                       {VK_RIGHT, "Hope = 95 (Anna)"},  {VK_DOWN, "Hope = 60 (Ben)"},
                       {VK_RIGHT, "Calm = 40 (Ben)"},   {VK_UP, "Hope = 95 (Anna)"},
                       {VK_DOWN, "Hope = 60 (Ben)"},    {VK_DOWN, "Hope = 60 (Ben)"},
                       {VK_UP, "Hope = 95 (Anna)"}};
    m_graph->SetFocus();
    for (const auto& c : cases) {
        windows().PressKey(c.key);
        const auto& told = windows().ToldEvents();
        const auto spoken = std::find_if(told.rbegin(), told.rend(), [&](const auto& event) {
            return event.window == m_graph.get() && !event.text.IsEmpty();
        });
        ASSERT_NE(spoken, told.rend());
        EXPECT_STREQ(spoken->text, c.spoken);
    }
    EXPECT_EQ(m_graph->AccessibleFocusChild(), 1);
    EXPECT_STREQ(m_graph->AccessibleChild(1).name, "Anna, Hope");
    EXPECT_STREQ(m_graph->AccessibleChild(2).value, "");
    EXPECT_EQ(m_graph->AccessibleChildCount(), 6);
}

TEST_F(ProfileGraphCtlTest, ADestroyedWindowGetsNoTimer) {
    windows().MoveMouse(m_graph->ScreenPoint(1, 30));
    m_graph.reset();
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
    graph.SetXLegend(row({"", "Worry and\nfear", "Hope", "Calm"}));
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
                        {"Big Five", "Person 12", "Group", "20", " 80", "\xB3", "Worry and", "fear",
                         "Hope", "Anna", "Normal"},
                        {" 20", "\xA3"}}};
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

// TESSALINK_GRAPH_EVENTS: so many for each window.
int graphEvents() {
    return tessalink::test::eventCount("TESSALINK_GRAPH_EVENTS", 4000);
}

TEST(ProfileGraphCtlModel, ProfileGraphCtl) {
    tessalink::test::HeadlessDriver driver;
    tessalink::test::ProfileRun<ProfileGraphCtl>(driver, 43).Run(graphEvents());
}

TEST(ProfileGraphCtlModel, ProfileGraphCtl2) {
    tessalink::test::HeadlessDriver driver;
    tessalink::test::ProfileRun<ProfileGraphCtl2>(driver, 47).Run(graphEvents());
}

TEST(ProfileGraphCtlModel, ProfileGraphCtl3) {
    tessalink::test::HeadlessDriver driver;
    tessalink::test::ProfileRun<ProfileGraphCtl3>(driver, 44).Run(graphEvents());
}

TEST(ProfileGraphCtlModel, ProfileGraphCtl4) {
    tessalink::test::HeadlessDriver driver;
    tessalink::test::ProfileRun<ProfileGraphCtl4>(driver, 48).Run(graphEvents());
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

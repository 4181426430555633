#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "graphs/profile/ProfileGraphCtl.h"
#include "graphs/profile/ProfileGraphCtl2.h"
#include "graphs/profile/ProfileGraphCtl3.h"
#include "graphs/profile/ProfileGraphCtl4.h"
#include "platform/graphics/RecordingDevice.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"
#include "tests/support/Dice.h"

using tessalink::HeadlessSystem;

namespace {

constexpr double cMissing = -999999999.0;
const CRect cPlace(20, 30, 620, 430);

HeadlessSystem& windows() {
    return HeadlessSystem::Default();
}

CStringArray* row(std::initializer_list<const char*> texts) {
    auto* array = new CStringArray;
    for (const char* text : texts) array->Add(text);
    return array;
}

double* scores(std::initializer_list<double> values) {
    auto* array = new double[values.size()];
    std::copy(values.begin(), values.end(), array);
    return array;
}

// Shows what is needed to point at things, and counts hints.
template <class Ctl>
class Shown : public Ctl {
public:
    using Ctl::Ctl;

    CPoint ScreenPoint(int scale, double score) {
        CPoint point = Place(scale, score);
        this->ClientToScreen(&point);
        return point;
    }
    CRect ScreenLegend() {
        CRect rect = this->m_legendRect;
        CPoint origin;
        this->ClientToScreen(&origin);
        rect.OffsetRect(origin);
        return rect;
    }
    int Radius() const { return this->m_charWidth / 2; }
    CPoint Place(int scale, double score) const {
        return {this->dev_x(scale), this->dev_y_in_plot(score)};
    }
    double ScoreAt(int y) const {
        return (this->m_plotBottom - y) / this->m_yScale + this->m_scores.min;
    }
    CRect Plot() const { return this->plot_rect(); }
    CPoint LegendPercent() const { return {this->m_legendX, this->m_legendY}; }

    BOOL OnHint(CString& text, CPoint& point) override {
        if constexpr (!std::is_same_v<Ctl, ProfileGraphCtl4>) {
            const BOOL found = Ctl::OnHint(text, point);
            hints.emplace_back(found != 0 ? text.GetString() : "none");
            return found;
        }
    }

    std::vector<std::string> hints;
};

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

// The hover, the hints, the keys and the legend of a graph, as plainly as can be.
class ProfileModel {
public:
    static constexpr int cScales = 5;
    static constexpr int cProfiles = 3;
    static constexpr int cPeriod = 200;

    struct Relation {
        bool isUsed;
        const char* sign;
        bool isLower;
    };

    std::string Text(int profile, int scale) const {
        double value = scores[profile][scale - 1];
        std::string sign = "=";
        for (const Relation& relation : relations) {
            const double end = relation.isLower ? labelStart : labelEnd;
            if (!relation.isUsed || (relation.isLower ? value > end : value < end)) continue;
            value = end;
            sign = relation.sign;
            break;
        }
        char number[40];
        std::snprintf(number, sizeof number, "%.*f", decimals, value);
        const std::string parts[] = {std::string(1, static_cast<char>('A' + scale - 1)), sign,
                                     number, "P" + std::to_string(profile)};
        std::string text;
        for (std::size_t i = 0; i < format.size(); ++i) {
            const bool isPlace = format[i] == '%' && i + 1 < format.size() &&
                                 format[i + 1] >= '1' && format[i + 1] <= '4';
            text += isPlace ? parts[format[++i] - '1'] : std::string(1, format[i]);
        }
        return text;
    }
    bool IsScore(int profile, int scale) const { return scores[profile][scale - 1] != cMissing; }
    template <class Graph>
    std::string At(const Graph& graph, CPoint point) const {
        const double score = graph.ScoreAt(point.y);
        if (score < 20 || score > 80) return "";
        for (int profile = 0; profile < cProfiles; ++profile) {
            for (int scale = 1; scale <= cScales; ++scale) {
                if (!IsScore(profile, scale)) continue;
                const CPoint place = graph.Place(scale, scores[profile][scale - 1]);
                const bool isNear = std::abs(point.x - place.x) <= graph.Radius() &&
                                    std::abs(point.y - place.y) <= graph.Radius();
                if (isNear) return Text(profile, scale);
            }
        }
        return "";
    }
    void Hide() {
        hint.clear();
        leaveDue = -1;
    }
    void StopTracking() {
        tracks = false;
        hoverDue = -1;
    }
    void Move(CPoint point) {
        if (point != last) Hide();
        if (tracks) {
            isAtRest = false;
            if (!hintsOn) StopTracking();
        } else if (hintsOn) {
            hoverDue = now + cPeriod;
            tracks = isAtRest = true;
        }
        last = point;
    }
    template <class Graph>
    void Hover(const Graph& graph) {
        hoverDue += cPeriod;
        if (!isAtRest) {
            isAtRest = true;
        } else if (!isInside || hint.empty()) {
            StopTracking();
            const std::string found = isInside ? At(graph, last) : "";
            if (found.empty()) return;
            hint = found;
            isOfCursor = false;
            leaveDue = now + cPeriod;
        }
    }
    template <class Graph>
    void Pass(const Graph& graph, int time) {
        for (const int end = now + time; now < end;) {
            ++now;
            if (now == hoverDue) Hover(graph);
            if (now == leaveDue) isInside ? static_cast<void>(leaveDue += cPeriod) : Hide();
        }
    }
    // Something was painted: the hint tells what is there now.
    template <class Graph>
    void Refresh(const Graph& graph) {
        if (hint.empty()) return;
        const bool isPoint = profile >= 0 && IsScore(profile, scale);
        if (isOfCursor && isPoint) last = graph.Place(scale, scores[profile][scale - 1]);
        const std::string now_ =
            !isOfCursor ? At(graph, last) : (isPoint ? Text(profile, scale) : "");
        now_.empty() ? Hide() : static_cast<void>(hint = now_);
    }
    // The nearest score of a profile, of two the left one; 0 without any.
    int Nearest(int of, int to) const {
        int best = 0;
        for (int i = 1; i <= cScales; ++i) {
            if (IsScore(of, i) && (best == 0 || std::abs(i - to) < std::abs(best - to))) best = i;
        }
        return best;
    }
    bool Step(int scaleStep, int profileStep) {
        const bool isFirst = profile < 0 || !IsScore(profile, scale);
        if (isFirst || profileStep != 0) {
            const int step = isFirst ? 1 : profileStep;
            for (int p = isFirst ? 0 : profile + step; p >= 0 && p < cProfiles; p += step) {
                const int nearest = Nearest(p, isFirst ? 1 : scale);
                if (nearest == 0) continue;
                profile = p;
                scale = nearest;
                return true;
            }
            return false;
        }
        for (int i = scale + scaleStep; i >= 1 && i <= cScales; i += scaleStep) {
            if (!IsScore(profile, i)) continue;
            scale = i;
            return true;
        }
        return false;
    }
    template <class Graph>
    void Key(const Graph& graph, int scaleStep, int profileStep) {
        if (!Step(scaleStep, profileStep)) return;
        Hide();
        spoken = Text(profile, scale);
        if (!hintsOn) return;
        hint = spoken;
        last = graph.Place(scale, scores[profile][scale - 1]);
        isOfCursor = true;
    }

    double scores[cProfiles][cScales] = {};
    Relation relations[4] = {
        {false, "<=", true}, {false, ">=", false}, {false, "<", true}, {false, ">", false}};
    double labelStart = 20;
    double labelEnd = 80;
    int decimals = 0;
    std::string format = "%1 %2 %3 (%4)";
    bool hintsOn = true;
    bool tracks = false;
    bool isAtRest = false;
    bool isInside = false;  // the mouse, in the window
    CPoint last;
    int now = 0;
    int hoverDue = -1;
    int leaveDue = -1;
    std::string hint;
    bool isOfCursor = false;
    int profile = -1;
    int scale = 0;
    std::string spoken;
    bool hasFocus = false;
};

// Any input on a graph and its model.
template <class Ctl>
class ProfileRun {
public:
    explicit ProfileRun(std::uint64_t seed) : m_dice(seed), m_graph(20, 80, 10, 0, 1, 0, 300, 200) {
        m_host.Create("Host", CRect(0, 0, 800, 600));
        m_other.CWnd::Create(nullptr, "", WS_CHILD | WS_VISIBLE, CRect(700, 500, 790, 590), &m_host,
                             9);
        if constexpr (std::is_same_v<Ctl, ProfileGraphCtl>) {
            m_graph.SetXLegend(row({"", "A", "B", "C", "D", "E"}), nullptr, nullptr, nullptr);
        } else {
            m_graph.SetXLegend(row({"", "\\iA", "B", "C", "D", "E"}));
        }
        for (int i = 0; i < ProfileModel::cProfiles; ++i) {
            const CString name = ("P" + std::to_string(i)).c_str();
            const auto id = static_cast<unsigned>(i);
            if constexpr (std::is_same_v<Ctl, ProfileGraphCtl>) {
                m_graph.AddProfile(name, new double[ProfileModel::cScales]{}, 0, id);
            } else {
                m_graph.AddProfile(name, new double[ProfileModel::cScales]{}, 0, id,
                                   Ctl::PointType::Symbol, 0, 0);
            }
        }
        m_graph.Create(cPlace, &m_host, 5, WS_CHILD | WS_VISIBLE, nullptr);
        m_other.SetFocus();
        windows().MoveMouse({790, 10});
        windows().Pump();
        windows().ToldEvents().clear();
    }

    void Run(int events) {
        const std::pair<int, void (ProfileRun::*)()> weighted[] = {
            {30, &ProfileRun::Move},   {30, &ProfileRun::Pass},     {20, &ProfileRun::Key},
            {4, &ProfileRun::Focus},   {3, &ProfileRun::Score},     {3, &ProfileRun::Drag},
            {2, &ProfileRun::Options}, {2, &ProfileRun::Relations}, {2, &ProfileRun::Resize}};
        for (int event = 0; event < events && !testing::Test::HasFailure(); ++event) {
            int left = Below(96);
            auto chosen = std::begin(weighted);
            while (left >= chosen->first) left -= (chosen++)->first;
            m_model.spoken.clear();
            (this->*chosen->second)();
            Check(event);
        }
        EXPECT_GT(m_hovered, events / 200);
        EXPECT_GT(m_dragged, events / 100);
    }

private:
    int Below(int count) { return static_cast<int>(m_dice.Below(static_cast<std::size_t>(count))); }
    void Paint() {
        windows().Pump();
        m_model.Refresh(m_graph);
    }
    CWnd* Tip() const {
        CPoint point = m_model.last + CSize(1, 21);
        m_graph.ClientToScreen(&point);
        return DYNAMIC_DOWNCAST(TipWindow, windows().WindowAt(point));
    }
    // Next to a point of the graph, or anywhere.
    void Move() {
        CPoint point(Below(800), Below(600));
        const int profile = Below(ProfileModel::cProfiles);
        const int scale = 1 + Below(ProfileModel::cScales);
        if (m_model.IsScore(profile, scale) && !m_dice.OneIn(4)) {
            point = m_graph.Place(scale, m_model.scores[profile][scale - 1]);
            point.Offset(Below(13) - 6, Below(13) - 6);
            m_graph.ClientToScreen(&point);
        }
        const CWnd* target = windows().WindowAt(point);
        windows().MoveMouse(point);
        FindMouse();
        if (target == &m_graph) {
            m_graph.ScreenToClient(&point);
            m_model.Move(point);
        } else if (DYNAMIC_DOWNCAST(TipWindow, const_cast<CWnd*>(target)) != nullptr) {
            m_model.hint.clear();  // it gives way
        }
    }
    void Pass() {
        const int time = m_dice.OneIn(3) ? 200 : Below(300);
        const std::string before = m_model.hint;
        windows().Advance(static_cast<UINT>(time));
        m_model.Pass(m_graph, time);
        m_hovered += m_model.hint != before && !m_model.hint.empty();
    }
    void Key() {
        const int key = Below(4);
        windows().PressKey(VK_LEFT + static_cast<UINT>(key));
        if (m_model.hasFocus)
            m_model.Key(m_graph, (key % 2 == 0 ? key - 1 : 0), key % 2 != 0 ? key - 2 : 0);
    }
    void Focus() {
        if (std::exchange(m_model.hasFocus, !m_dice.OneIn(4))) {
            if (!m_model.hasFocus) m_model.Hide();
        }
        (m_model.hasFocus ? static_cast<CWnd*>(&m_graph) : &m_other)->SetFocus();
        Paint();
    }
    void Score() {
        const int profile = Below(ProfileModel::cProfiles);
        const bool isEmpty = m_dice.OneIn(8);
        const double ends[] = {m_model.labelStart, m_model.labelEnd};
        auto* values = new double[ProfileModel::cScales];
        for (int i = 0; i < ProfileModel::cScales; ++i) {
            const bool isMissing = isEmpty || m_dice.OneIn(4);
            const double value = m_dice.OneIn(3) ? m_dice.Pick(ends) : 15 + Below(70 * 8) / 8.0;
            values[i] = isMissing ? cMissing : value;
            m_model.scores[profile][i] = values[i];
        }
        m_graph.UpdateProfile(static_cast<unsigned>(profile), nullptr, values);
        m_graph.Invalidate();
        Paint();
    }
    void Options() {
        m_model.hintsOn = !m_dice.OneIn(4);
        m_graph.UseToolTips(m_model.hintsOn ? 1 : 0);
        if (!m_model.hintsOn) m_model.Hide();
        static const char* const formats[] = {"%1 %2 %3 (%4)", "%4%4: %3%", "%%1%5"};
        if (m_dice.OneIn(2)) {
            m_model.format = m_dice.Pick(formats);
            m_model.hintsOn = true;
            m_graph.SetHintFormat(m_model.format.c_str());
        }
        m_model.decimals = Below(4);
        m_graph.SetDecPlaces(static_cast<unsigned short>(m_model.decimals));
        m_graph.Invalidate();
        Paint();
    }
    void Relations() {
        int use[4];
        for (int i = 0; i < 4; ++i) {
            const bool isThere = i < 2 || !std::is_same_v<Ctl, ProfileGraphCtl>;
            m_model.relations[i].isUsed = (use[i] = isThere && m_dice.OneIn(2) ? 1 : 0) != 0;
        }
        m_graph.UseLe(use[0]);
        m_graph.UseGe(use[1]);
        if constexpr (!std::is_same_v<Ctl, ProfileGraphCtl>) {
            m_graph.UseLt(use[2]);
            m_graph.UseGt(use[3]);
        }
        m_model.labelStart = 20 + Below(20);
        m_model.labelEnd = 80 - Below(20);
        m_graph.SetYLabelStart(static_cast<int>(m_model.labelStart));
        m_graph.SetYLabelEnd(static_cast<int>(m_model.labelEnd));
        m_graph.Invalidate();
        Paint();
    }
    void FindMouse() {
        CPoint cursor;
        CRect window;
        GetCursorPos(&cursor);
        m_graph.GetWindowRect(&window);
        m_model.isInside = window.PtInRect(cursor) != 0;
    }
    void Resize() {
        m_graph.MoveWindow(CRect(CPoint(20, 30), CSize(300 + Below(320), 200 + Below(220))));
        FindMouse();
        Paint();
    }
    void Drag() {
        const CRect legend = m_graph.ScreenLegend();
        const CPoint grip = legend.TopLeft() + CSize(Below(legend.Width()), Below(legend.Height()));
        if (windows().WindowAt(grip) != &m_graph) return;
        const CRect plot = m_graph.Plot();
        CPoint client = legend.TopLeft();
        m_graph.ScreenToClient(&client);
        const CSize by(Below(plot.Width()) - client.x, Below(plot.Height()) - client.y);
        const bool givesUp = m_dice.OneIn(4);
        windows().Queue([&] { windows().MoveMouse(grip + CSize(by.cx / 2, 9)); });
        windows().Queue(
            [&] { givesUp ? windows().PressKey(VK_ESCAPE) : windows().Release(grip + by); });
        m_model.StopTracking();
        m_model.Hide();
        windows().Press(grip);
        m_model.hasFocus = true;
        if (givesUp) {
            windows().Release({790, 10});  // later, far away
        } else {
            const auto percent = [](int distance, int length) {
                return static_cast<int>(std::floor(distance * 100.0 / length + 0.5));
            };
            if (by != CSize()) {
                m_percent = {percent(client.x + by.cx - plot.left, plot.Width()),
                             percent(client.y + by.cy - plot.top, plot.Height())};
            }
        }
        ++m_dragged;
        FindMouse();
        Paint();
        const CRect now = m_graph.Plot();
        CPoint corner = m_graph.ScreenLegend().TopLeft();
        m_graph.ScreenToClient(&corner);
        EXPECT_EQ(corner, CPoint(now.left + now.Width() * m_percent.x / 100,
                                 now.top + now.Height() * m_percent.y / 100));
    }
    void Check(int event) {
        Paint();
        if (!m_model.hint.empty()) m_tip = Tip();
        const bool isShown = m_tip != nullptr && m_tip->IsWindowVisible() != 0;
        CString text;
        if (isShown) m_tip->GetWindowText(text);
        ASSERT_EQ(text.GetString(), m_model.hint) << event;
        ASSERT_EQ(m_graph.LegendPercent(), m_percent) << event;
        std::string spoken;
        for (const auto& told : std::exchange(windows().ToldEvents(), {})) {
            if (told.window == &m_graph && !told.text.IsEmpty()) spoken = told.text;
        }
        ASSERT_EQ(spoken, m_model.spoken) << event;
        const bool isPoint =
            m_model.profile >= 0 && m_model.IsScore(m_model.profile, m_model.scale);
        ASSERT_EQ(m_graph.AccessibleFocusChild(),
                  isPoint ? m_model.profile * ProfileModel::cScales + m_model.scale - 1 : -1)
            << event;
    }

    CFrameWnd m_host;
    CWnd m_other;
    tessalink::test::Dice m_dice;
    Shown<Ctl> m_graph;
    ProfileModel m_model;
    CWnd* m_tip = nullptr;
    CPoint m_percent{5, 5};
    int m_hovered = 0;
    int m_dragged = 0;
};

// TESSALINK_GRAPH_EVENTS: so many for each window.
int eventCount() {
    const char* wanted = std::getenv("TESSALINK_GRAPH_EVENTS");
    return wanted != nullptr ? std::atoi(wanted) : 4000;
}

TEST(ProfileGraphCtlModel, ProfileGraphCtl) {
    ProfileRun<ProfileGraphCtl>(43).Run(eventCount());
}

TEST(ProfileGraphCtlModel, ProfileGraphCtl3) {
    ProfileRun<ProfileGraphCtl3>(44).Run(eventCount());
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

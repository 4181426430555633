#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "graphs/profile/windows/ProfileGraphCtl.h"
#include "graphs/profile/windows/ProfileGraphCtl2.h"
#include "graphs/profile/windows/ProfileGraphCtl3.h"
#include "graphs/profile/windows/ProfileGraphCtl4.h"
#include "tests/support/Dice.h"
#include "tests/support/EventCount.h"
#include "tests/support/InputDriver.h"
#include "tests/support/OddNumbers.h"

namespace tessalink::test {

inline CStringArray* row(std::initializer_list<const char*> texts) {
    auto* array = new CStringArray;
    for (const char* text : texts) array->Add(text);
    return array;
}

// What the windows differ in.
template <class Ctl>
constexpr bool cHasOneXLegend = !std::is_same_v<Ctl, ProfileGraphCtl>;
template <class Ctl>
constexpr bool cHasStrictRelations = std::is_same_v<Ctl, ProfileGraphCtl3>;
template <class Ctl>
constexpr bool cHasHints = !std::is_same_v<Ctl, ProfileGraphCtl4>;

/// Shows what is needed to point at things, and counts hints.
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
        const BOOL found = Ctl::OnHint(text, point);
        hints.emplace_back(found != 0 ? text.GetString() : "none");
        return found;
    }

    std::vector<std::string> hints;
};

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

    static std::string NameOf(int scale) { return {static_cast<char>('A' + scale - 1)}; }
    std::string Number(double value) const {
        char number[40];
        std::snprintf(number, sizeof number, "%.*f", decimals, value);
        return number;
    }
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
        const std::string parts[] = {NameOf(scale), sign, Number(value),
                                     "P" + std::to_string(profile)};
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
    ProfileRun(InputDriver& driver, std::uint64_t seed)
        : m_driver(driver), m_dice(seed), m_graph(20, 80, 10, 0, 1, 0, 300, 200) {
        m_model.hintsOn = cHasHints<Ctl>;
        if constexpr (cHasOneXLegend<Ctl>) {
            m_graph.SetXLegend(row({"", "\\iA", "B", "C", "D", "E"}));
        } else {
            m_graph.SetXLegend(row({"", "A", "B", "C", "D", "E"}), nullptr, nullptr, nullptr);
        }
        for (int i = 0; i < ProfileModel::cProfiles; ++i) {
            const CString name = ("P" + std::to_string(i)).c_str();
            const auto id = static_cast<unsigned>(i);
            if constexpr (cHasOneXLegend<Ctl>) {
                m_graph.AddProfile(name, new double[ProfileModel::cScales]{}, 0, id,
                                   Ctl::PointType::Symbol, 0, 0);
            } else {
                m_graph.AddProfile(name, new double[ProfileModel::cScales]{}, 0, id);
            }
        }
        m_graph.Create(CRect(20, 30, 620, 430), &m_driver.Host(), 5, WS_CHILD | WS_VISIBLE,
                       nullptr);
        MoveTo({790, 10});
        m_driver.Pump();
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
            (this->*chosen->second)();
            Check(event);
        }
        if (!cHasHints<Ctl>) return;
        EXPECT_GT(m_hovered, events / 200);
        EXPECT_GT(m_dragged, events / 100);
    }

private:
    int Below(int count) { return static_cast<int>(m_dice.Below(static_cast<std::size_t>(count))); }
    void Paint() {
        m_driver.Pump();
        m_model.Refresh(m_graph);
    }
    void MoveTo(CPoint point) { m_driver.MoveMouse(m_mouse = point); }
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
        // Who moves nothing tells nothing.
        if (point == m_mouse) return;
        const bool isOnGraph = m_driver.Reaches(m_graph, point);
        const bool isOnTip = m_driver.IsOnTip(point);
        MoveTo(point);
        FindMouse();
        if (isOnGraph) {
            m_graph.ScreenToClient(&point);
            m_model.Move(point);
        } else if (isOnTip) {
            m_model.hint.clear();  // it gives way
        }
    }
    void Pass() {
        const int time = m_dice.OneIn(3) ? 200 : Below(300);
        const std::string before = m_model.hint;
        m_driver.Rest(static_cast<UINT>(time));
        m_model.Pass(m_graph, time);
        m_hovered += m_model.hint != before && !m_model.hint.empty();
    }
    void Key() {
        const int key = Below(4);
        if (!m_model.hasFocus) return;
        m_driver.PressKey(VK_LEFT + static_cast<UINT>(key));
        m_model.Key(m_graph, (key % 2 == 0 ? key - 1 : 0), key % 2 != 0 ? key - 2 : 0);
    }
    void Focus() {
        const bool had = std::exchange(m_model.hasFocus, !m_dice.OneIn(4));
        if (had && !m_model.hasFocus) m_model.Hide();
        if (!m_model.hasFocus) {
            m_driver.Leave();
        } else if (!had) {
            m_driver.Enter(m_graph);
        }
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
        if constexpr (cHasHints<Ctl>) Hints();
        m_model.decimals = Below(4);
        m_graph.SetDecPlaces(static_cast<unsigned short>(m_model.decimals));
        m_graph.Invalidate();
        Paint();
    }
    void Hints() {
        m_model.hintsOn = !m_dice.OneIn(4);
        m_graph.UseToolTips(m_model.hintsOn ? 1 : 0);
        if (!m_model.hintsOn) m_model.Hide();
        static const char* const formats[] = {"%1 %2 %3 (%4)", "%4%4: %3%", "%%1%5"};
        if (m_dice.OneIn(2)) {
            m_model.format = m_dice.Pick(formats);
            m_model.hintsOn = true;
            m_graph.SetHintFormat(m_model.format.c_str());
        }
    }
    void Relations() {
        int use[4];
        for (int i = 0; i < 4; ++i) {
            const bool isThere = i < 2 || cHasStrictRelations<Ctl>;
            m_model.relations[i].isUsed = (use[i] = isThere && m_dice.OneIn(2) ? 1 : 0) != 0;
        }
        m_graph.UseLe(use[0]);
        m_graph.UseGe(use[1]);
        if constexpr (cHasStrictRelations<Ctl>) {
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
        tessalink::GetCursorPos(&cursor);
        m_graph.GetWindowRect(&window);
        m_model.isInside = window.PtInRect(cursor) != 0;
    }
    void Resize() {
        m_graph.MoveWindow(CRect(CPoint(20, 30), CSize(300 + Below(320), 200 + Below(220))));
        FindMouse();
        Paint();
    }
    void Drag() {
        if (!cHasHints<Ctl>) return;  // its legend stays below the plot
        const CRect legend = m_graph.ScreenLegend();
        const CPoint grip = legend.TopLeft() + CSize(Below(legend.Width()), Below(legend.Height()));
        if (!m_driver.Reaches(m_graph, grip)) return;
        const CRect plot = m_graph.Plot();
        CPoint client = legend.TopLeft();
        m_graph.ScreenToClient(&client);
        const CSize by(Below(plot.Width()) - client.x, Below(plot.Height()) - client.y);
        const bool givesUp = m_dice.OneIn(4);
        m_driver.Queue([&] { MoveTo(grip + CSize(by.cx / 2, 9)); });
        m_driver.Queue(
            [&] { givesUp ? m_driver.PressKey(VK_ESCAPE) : m_driver.Release(grip + by); });
        m_model.StopTracking();
        m_model.Hide();
        m_driver.Press(grip);
        m_model.hasFocus = true;
        if (givesUp) {
            m_driver.Release({790, 10});  // later, far away
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
        CPoint below = m_model.last + CSize(1, 21);
        m_graph.ClientToScreen(&below);
        ASSERT_EQ(m_driver.TipText(below), m_model.hint) << event;
        ASSERT_EQ(m_graph.LegendPercent(), m_percent) << event;
        ASSERT_EQ(m_driver.Spoken(m_graph), m_model.spoken) << event;
        const bool isPoint =
            m_model.profile >= 0 && m_model.IsScore(m_model.profile, m_model.scale);
        ASSERT_EQ(m_graph.AccessibleFocusChild(),
                  isPoint ? m_model.profile * ProfileModel::cScales + m_model.scale - 1 : -1)
            << event;
        ASSERT_EQ(m_graph.AccessibleChildCount(), ProfileModel::cProfiles * ProfileModel::cScales);
        const int profile = Below(ProfileModel::cProfiles);
        const int scale = 1 + Below(ProfileModel::cScales);
        const auto told = m_graph.AccessibleChild(profile * ProfileModel::cScales + scale - 1);
        ASSERT_EQ("P" + std::to_string(profile) + ", " + ProfileModel::NameOf(scale),
                  told.name.GetString());
        ASSERT_EQ(m_model.IsScore(profile, scale)
                      ? m_model.Number(m_model.scores[profile][scale - 1])
                      : "",
                  told.value.GetString());
    }

    InputDriver& m_driver;
    Dice m_dice;
    Shown<Ctl> m_graph;
    ProfileModel m_model;
    CPoint m_mouse{-1, -1};
    CPoint m_percent{5, 5};
    int m_hovered = 0;
    int m_dragged = 0;
};

/// One window with a driver of its own. TESSALINK_GRAPH_EVENTS: so many events.
template <class Driver, class Ctl>
void runGraph(const char* name, std::uint64_t seed) {
    SCOPED_TRACE(name);
    Driver driver;
    ProfileRun<Ctl>(driver, seed).Run(eventCount("TESSALINK_GRAPH_EVENTS", 4'000));
}

template <class Driver>
void runGraphs(std::uint64_t seed) {
    runGraph<Driver, ProfileGraphCtl>("ProfileGraphCtl", seed);
    runGraph<Driver, ProfileGraphCtl2>("ProfileGraphCtl2", seed + 1);
    runGraph<Driver, ProfileGraphCtl3>("ProfileGraphCtl3", seed + 2);
    runGraph<Driver, ProfileGraphCtl4>("ProfileGraphCtl4", seed + 3);
}

}  // namespace tessalink::test

#pragma once

#include <algorithm>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <memory>
#include <type_traits>
#include <vector>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/DataEntryCtl.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/FlowLayoutMgr.h"
#include "dataentry/GridLayoutMgr.h"
#include "dataentry/ImplDecIntegerDataEntryUI.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/RspListItemUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TextDataEntryUI.h"
#include "dataentry/TimeDataEntryUI.h"
#include "graphs/profile/windows/ProfileGraphCtl.h"
#include "graphs/profile/windows/ProfileGraphCtl2.h"
#include "graphs/profile/windows/ProfileGraphCtl3.h"
#include "graphs/profile/windows/ProfileGraphCtl4.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"
#include "tests/support/InputDriver.h"

/// Every control in each of its states, for pictures of them by any window system.
namespace tessalink::test::states {

inline constexpr UINT cStateId = 7;
inline constexpr int cLabelWidth = 84;

// Forms.

struct Kind {
    const char* typed;
    std::function<DataEntryItemUI*()> makeInterface;
    std::function<DataEntryItem*(bool hasValue)> makeItem;
};

template <class Item, class Value>
std::function<DataEntryItem*(bool)> maker(const char* label, Value value) {
    return [=](bool hasValue) -> DataEntryItem* {
        return hasValue ? new Item(value, label) : new Item(label);
    };
}

inline DataEntryItem* makeText(const char* label, const char* value, bool hasValue) {
    return new TextDataEntryItem(hasValue ? value : nullptr, label);
}

inline DataEntryItem* makeFloat(const char* label, double value, bool hasValue) {
    auto* const item = new FloatDataEntryItem(label);
    if (hasValue) item->SetValue(value);
    return item;
}

inline const std::vector<Kind>& textKinds() {
    constexpr int cChars = 8;
    static const std::vector<Kind> kinds = {
        {"Eve", [] { return new TextDataEntryUI(cLabelWidth, 20, 0, cChars); },
         [](bool has) { return makeText("Name", "Ada \xC5gren", has); }},
        {"7", [] { return new IntegerDataEntryUI(cLabelWidth, cChars); },
         maker<IntegerDataEntryItem>("Age", 42)},
        {"7.2", [] { return new ImplDecIntegerDataEntryUI(cLabelWidth, cChars, 2, 0); },
         maker<IntegerDataEntryItem>("Income", 123456)},
        {"-1.", [] { return new FloatDataEntryUI(cLabelWidth, cChars, 1, 1); },
         [](bool has) { return makeFloat("Years of\nschooling", 12.5, has); }},
        {"9", [] { return new TimeDataEntryUI(cLabelWidth, 1); },
         maker<IntegerDataEntryItem>("Begun at", 1435)},
        {"Was late", [] { return new TextDataEntryUI(cLabelWidth, 200, 3, cChars); },
         [](bool has) { return makeText("Remarks", "Has slept well\r\nand is rested", has); }},
    };
    return kinds;
}

inline const std::vector<Kind>& choiceKinds() {
    static const std::vector<Kind> kinds = {
        {nullptr, [] { return new CheckBoxItemUI("[has glasses|gG|1]", cLabelWidth); },
         maker<IntegerDataEntryItem>("Sight", 1)},
        {nullptr,
         [] { return new CheckBoxItemUI("[English|eE][French|fF][][other|oO]", cLabelWidth); },
         maker<IntegerDataEntryItem>("Languages", 5)},
        {nullptr,
         [] { return new CheckBoxItemColUI("[mother|mM][father|fF][][others|oO]", cLabelWidth); },
         maker<IntegerDataEntryItem>("Lives with", 3)},
        {nullptr,
         [] { return new RadioBtnItemUI("[female|fF|1][male|mM|2][diverse|dD|3]", cLabelWidth); },
         maker<IntegerDataEntryItem>("Sex", 1)},
        {nullptr,
         [] { return new RspListItemUI("[never|1|1][at times|2|2][often|3|3]", cLabelWidth); },
         maker<IntegerDataEntryItem>("I am calm", 2)},
    };
    return kinds;
}

// One item in one of its states, in a form of its own.
struct State {
    const char* name;
    bool hasValue;
    bool isReadOnly;
    bool isCurrent;
    bool isWorked;  // something is typed, or the keyboard has led to a choice
    bool isRefused = false;
};

// A form with an item of every kind, of which one is current.
inline void addItems(DataEntryCtl& form) {
    const auto add = [&](const Kind& kind, bool hasValue) {
        form.AddItem(kind.makeItem(hasValue), kind.makeInterface());
    };
    for (const Kind& kind : textKinds()) add(kind, &kind != &textKinds()[1]);
    for (const Kind& kind : choiceKinds()) add(kind, &kind != &choiceKinds()[2]);
    form.SetReadOnlyItem(0, 1);
}

// Lists.

// What brings a list into a state, and what is keyed then; without keys it has no focus.
template <class List>
struct ListState {
    const char* name;
    std::function<void(List&)> prepare;
    std::vector<UINT> keys;
    bool leaves = false;
};

inline void answer(ItemListCtl& list) {
    for (int i = 0; i < list.GetItemCount(); ++i) {
        if (i % 4 != 2) list.SetItem(i, static_cast<std::uint16_t>(1 + i % 3));
    }
}

inline const char* cNames[] = {"Worry", "Hope", "Calm", "Self-reliance", "Trust",
                               "Order", "Zest", "Wit",  "Patience",      "Warmth"};
inline int cRanges[] = {0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40};

template <class List>
void score(List& list) {
    for (int i = 0; i < 10; ++i) list.SetItem(i, 7 * i % 38);
}

template <class List>
void scoreSome(List& list) {
    score(list);
    list.SetReadOnlyItem(1);
    list.SetReadOnlyItem(6);
}

// Profile graphs.

inline CStringArray* textRow(std::initializer_list<const char*> texts) {
    auto* const row = new CStringArray;
    for (const char* text : texts) row->Add(text);
    return row;
}

inline double* scores(std::initializer_list<double> values) {
    auto* const array = new double[values.size()];
    std::copy(values.begin(), values.end(), array);
    return array;
}

inline constexpr double cNoScore = ProfileChart::cDefaultMissingValue;

template <class Graph>
void fill(Graph& graph) {
    constexpr COLORREF cBlue = RGB(0, 60, 140);
    constexpr COLORREF cRed = RGB(160, 40, 0);
    auto* const texts = textRow({"", "Worry", "Hope", "Calm", "Trust"});
    double* const anna = scores({35, 62, 48, 71});
    double* const ben = scores({55, 44, cNoScore, 30});
    if constexpr (std::is_base_of_v<ProfileGraph, Graph>) {
        graph.SetXLegend(texts, nullptr, nullptr, nullptr);
        graph.AddProfile("Anna", anna, cBlue, 1);
        graph.AddProfile("Ben", ben, cRed, 2);
    } else {
        graph.SetXLegend(texts);
        graph.AddProfile("Anna", anna, cBlue, 1, Graph::PointType::SymbolAndValue, PS_SOLID, 0);
        graph.AddProfile("Ben", ben, cRed, 2, Graph::PointType::Symbol, PS_DASH, 0);
    }
    graph.SetYLegend("T");
}

// Shows where things are.
template <class Graph>
class Shown : public Graph {
public:
    Shown() : Graph(20, 80, 10, 5, 1, 0, 300, 200) { fill(*this); }

    CPoint Point(int scale, double score) const {
        return {this->dev_x(scale), this->dev_y_in_plot(score)};
    }
    CPoint Legend() const { return this->m_legendRect.TopLeft(); }
};

/// The pictures, made by a Look. It has
///
///     Picture                                      a picture, and
///     Card(columns), Add(name, picture), Whole()   many of them in one
///     Stage(size)                                  a place for a window, with Host(), Show() when
///                                                  the window is there, Resize(size),
///                                                  FocusElsewhere(), Refuse() what is keyed
///     Type(text), Press(key, held), Settle()       keys to what has the focus
///     PictureOf(window, scale, area)               in units of the window, all of it by default
///     MovePointer(window, point)
///     PictureWhileDragging(window, from, to)
template <class Look>
struct ControlStates {
    using Picture = typename Look::Picture;
    using Card = typename Look::Card;
    using Stage = typename Look::Stage;

    static Picture pictureOfItem(const Kind& kind, const State& state, int width, double scale) {
        Stage stage(CSize(width, 200));
        DataEntryCtl form(new SingleColLayoutMgr);
        form.Create(CRect(), cStateId, &stage.Host());
        form.AddItem(kind.makeItem(state.hasValue), kind.makeInterface());
        stage.Show();
        EXPECT_LE(form.GetItemLoc(0).right, width - 2);
        stage.Resize(CSize(width, form.GetItemLoc(0).bottom + 2));
        form.SetReadOnlyItem(0, state.isReadOnly ? 1 : 0);
        Look::Settle();
        if (state.isCurrent) form.SetFocus();
        if (state.isWorked && kind.typed != nullptr) Look::Type(kind.typed);
        if (state.isWorked && kind.typed == nullptr) Look::Press(VK_RIGHT, Held{true});
        if (state.isRefused) {
            stage.Refuse();
            Look::Press(VK_RETURN);
        }
        Look::Settle();
        CRect inside;
        form.GetWindowRect(&inside);
        inside = CRect(1, 1, inside.Width() - 1, inside.Height() - 1);
        return Look::PictureOf(form, scale, inside);
    }

    static Picture cardOfItems(const std::vector<Kind>& kinds, int width, double scale = 1) {
        constexpr State cStates[] = {
            {"plain", true, false, false, false},
            {"current", true, false, true, false},
            {"current, keyed", true, false, true, true},
            {"no value", false, false, false, false},
            {"no value, current", false, false, true, false},
            {"read-only", true, true, false, false},
            {"read-only, current", true, true, true, false},
            {"read-only, no value", false, true, false, false},
        };
        Card card(static_cast<int>(std::size(cStates)) / 2);
        for (std::size_t half = 0; half < std::size(cStates); half += std::size(cStates) / 2) {
            for (const Kind& kind : kinds) {
                for (std::size_t i = half; i < half + std::size(cStates) / 2; ++i) {
                    const bool isFirst = &kind == &kinds.front();
                    card.Add(isFirst ? cStates[i].name : "",
                             pictureOfItem(kind, cStates[i], width, scale));
                }
            }
        }
        return card.Whole();
    }

    static Picture pictureOfForm(DataEntryLayoutMgr* layout, CSize size, int current,
                                 double scale = 1) {
        Stage stage(size);
        DataEntryCtl form(layout);
        addItems(form);
        form.Create(CRect(), cStateId, &stage.Host());
        stage.Show();
        form.SetCurrItem(current);
        Look::Settle();
        return Look::PictureOf(form, scale);
    }

    static Picture cardOfForms(double scale) {
        constexpr int cRadio = 9;
        constexpr int cAge = 1;
        Card card(3);
        card.Add("one column",
                 pictureOfForm(new SingleColLayoutMgr, CSize(360, 430), cRadio, scale));
        card.Add("two columns",
                 pictureOfForm(new GridLayoutMgr(0, 2, 0), CSize(520, 250), cAge, scale));
        card.Add("flow", pictureOfForm(new FlowLayoutMgr(0), CSize(600, 250), cRadio, scale));
        return card.Whole();
    }

    template <class List>
    static void addStates(Card& card, CSize size,
                          const std::function<std::unique_ptr<List>()>& make,
                          const std::vector<ListState<List>>& states) {
        for (const ListState<List>& state : states) {
            Stage stage(size);
            const std::unique_ptr<List> list = make();
            list->Create(CRect(), cStateId, &stage.Host());
            stage.Show();
            if (state.prepare) state.prepare(*list);
            if (!state.keys.empty()) list->SetFocus();
            for (const UINT key : state.keys) Look::Press(key);
            if (state.leaves) stage.FocusElsewhere();
            Look::Settle();
            card.Add(state.name, Look::PictureOf(*list));
        }
    }

    static Picture cardOfItemLists() {
        Card card(3);
        static DoubleKeying keying;
        const auto verify = [](ItemListCtl& list) {
            answer(list);
            list.BeginVerification(keying);
        };
        const auto readOnly = [](ItemListCtl& list) {
            answer(list);
            list.SetReadOnly(1);
        };
        const auto make = [] {
            return std::make_unique<ItemListCtl>(30, "[never|1|1][at times|2|2][often|3|3]", -1);
        };
        addStates<ItemListCtl>(card, CSize(360, 160), make,
                               {{"no answers", {}, {}},
                                {"answers, current item", answer, {VK_DOWN, '2', '3'}},
                                {"scrolled, without the focus", answer, {VK_END}, true},
                                {"read-only", readOnly, {VK_DOWN}},
                                {"second pass, a difference", verify, {'1', '2', '1', '3', '1'}}});
        const auto makeSets = [] {
            auto list = std::make_unique<ItemListCtl2>(
                14, "[T|t|1][F|f|2]:0-4,9;[1|1|1][2|2|2][3|3|3][4|4|4]:5-8,11-13", -1);
            list->SetFirstItemNumber(101);
            return list;
        };
        addStates<ItemListCtl2>(card, CSize(360, 160), makeSets,
                                {{"several sets", answer, {VK_RIGHT}}});
        return card.Whole();
    }

    template <class List>
    static void addNumberLists(Card& card, const std::function<std::unique_ptr<List>()>& make) {
        const auto readOnly = [](List& list) {
            scoreSome(list);
            list.SetReadOnly(1);
        };
        addStates<List>(card, CSize(360, 130), make,
                        {{"at start", {}, {}},
                         {"current entry", scoreSome<List>, {VK_DOWN, VK_DOWN}},
                         {"keyed", scoreSome<List>, {'3', '9'}},
                         {"read-only entry", scoreSome<List>, {VK_DOWN}},
                         {"refused, focus elsewhere", scoreSome<List>, {'9', '9'}, true},
                         {"read-only", readOnly, {VK_DOWN}}});
    }

    static Picture cardOfNumberLists() {
        Card card(3);
        addNumberLists<NumberListCtl>(
            card, [] { return std::make_unique<NumberListCtl>(10, cNames, cRanges); });
        addNumberLists<NumberListCtl3>(card, [] {
            auto list = std::make_unique<NumberListCtl3>(10, cNames, cRanges, 999U);
            list->SetMaxTextLen(3);
            return list;
        });
        static DoubleKeying keying;
        const auto verify = [](NumberListCtl2& list) {
            score(list);
            list.BeginVerification(keying);
            list.SetCurrItem(3);
        };
        addStates<NumberListCtl2>(
            card, CSize(360, 130),
            [] { return std::make_unique<NumberListCtl2>(10, cNames, cRanges); },
            {{"NumberListCtl2, second pass", verify, {'2', '1', VK_RETURN}},
             {"second pass, a difference", verify, {'2', '2', VK_RETURN}}});
        return card.Whole();
    }

    template <class Graph>
    struct GraphStage {
        GraphStage() {
            graph.Create(CRect(), &stage.Host(), cStateId, WS_CHILD | WS_VISIBLE, nullptr);
            stage.Show();
            Look::Settle();
            Look::PictureOf(graph);
        }

        Stage stage{CSize(300, 190)};
        Shown<Graph> graph;
    };

    template <class Graph>
    static Picture pictureOfHint() {
        GraphStage<Graph> shown;
        const CPoint point = shown.graph.Point(2, 62);
        // From elsewhere, so that it is a move.
        Look::MovePointer(shown.graph, point + CSize(40, 40));
        Look::MovePointer(shown.graph, point);
        shown.graph.OnTimer(1);
        shown.graph.OnTimer(1);
        Look::Settle();
        return Look::PictureOf(shown.graph);
    }

    template <class Graph>
    static Picture pictureOfFocus() {
        GraphStage<Graph> shown;
        shown.graph.SetFocus();
        for (const UINT key : {VK_RIGHT, VK_RIGHT, VK_DOWN}) Look::Press(key);
        Look::Settle();
        return Look::PictureOf(shown.graph);
    }

    template <class Graph>
    static Picture pictureOfDrag() {
        GraphStage<Graph> shown;
        const CPoint start = shown.graph.Legend() + CSize(3, 3);
        return Look::PictureWhileDragging(shown.graph, start, start + CSize(90, 50));
    }

    template <class Graph>
    static void addGraph(Card& card, const char* name) {
        card.Add(name, Look::PictureOf(GraphStage<Graph>().graph));
        if constexpr (!std::is_same_v<Graph, ProfileGraphCtl4>) {
            card.Add("the mouse rests on a point", pictureOfHint<Graph>());
        } else {
            GraphStage<Graph> shown;
            shown.graph.SetTitle("Before the training");
            shown.graph.AddTopLegend(1.5, "Mood", RGB(0, 90, 60));
            shown.graph.AddTopLegend(3.5, "Others", RGB(0, 90, 60));
            shown.graph.AddBand(40, 60, RGB(222, 235, 225), "average");
            shown.graph.SetBottomLegendStyle(ProfileGraphCtl4::cProfilesAndBands, 0);
            shown.graph.SetBackgroundTicks(1);
            Look::Settle();
            card.Add("with title, legends and grid", Look::PictureOf(shown.graph));
        }
        card.Add("a point has the focus", pictureOfFocus<Graph>());
        if constexpr (!std::is_same_v<Graph, ProfileGraphCtl4>) {
            card.Add("the legend is dragged", pictureOfDrag<Graph>());
        }
    }

    static Picture cardOfGraphs() {
        Card card(4);
        addGraph<ProfileGraphCtl>(card, "ProfileGraphCtl");
        addGraph<ProfileGraphCtl2>(card, "ProfileGraphCtl2");
        addGraph<ProfileGraphCtl3>(card, "ProfileGraphCtl3");
        addGraph<ProfileGraphCtl4>(card, "ProfileGraphCtl4");
        return card.Whole();
    }
};

}  // namespace tessalink::test::states

// What every control looks like in each of its states.
#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>
#include <QtTest>
#include <functional>
#include <memory>

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
#include "platform/qt/QtHost.h"
#include "platform/qt/UseQt.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"
#include "tests/platform/qt/StatePictures.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

constexpr UINT cId = 7;
constexpr int cLabelWidth = 84;

HostServices quietServices() {
    useQt();
    HostServices services = hostServices();
    services.beep = [](UINT) {};
    services.messageBox = [](const char*, UINT) { return IDOK; };
    services.localeValues = [] { return LocaleValues(); };
    return services;
}

void settle() {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void type(const char* text) {
    if (QWidget* const focus = QApplication::focusWidget()) QTest::keyClicks(focus, text);
}

void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    if (QWidget* const focus = QApplication::focusWidget()) QTest::keyClick(focus, key, modifiers);
}

// A dialog with a place for a window of the library, and a button that has the focus at first.
class Stage {
public:
    explicit Stage(QSize size) {
        auto* const layout = new QVBoxLayout(&m_dialog);
        m_holder = new WindowHolder([this](UINT message, WPARAM, LPARAM lParam) {
            return message == WM_NOTIFY ? Told(*reinterpret_cast<const NMHDR*>(lParam))
                                        : HostWindow::cNotHandled;
        });
        m_holder->setFixedSize(size);
        layout->addWidget(&m_button);
        layout->addWidget(m_holder);
    }

    // When the window is in its place.
    void Show() {
        m_dialog.show();
        m_dialog.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&m_dialog));
        m_button.setFocus();
    }

    void Resize(QSize size) { m_holder->setFixedSize(size); }
    CWnd& Host() { return m_holder->Host(); }
    QWidget& Button() { return m_button; }
    void Refuse() { m_refuses = true; }

private:
    HostWindow::Answer Told(const NMHDR& header) const {
        return m_refuses && header.code == DATAENTRY_CHANGING ? 1 : 0;
    }

    QDialog m_dialog;
    QPushButton m_button{"Elsewhere"};
    WindowHolder* m_holder;
    bool m_refuses = false;
};

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

DataEntryItem* makeText(const char* label, const char* value, bool hasValue) {
    return new TextDataEntryItem(hasValue ? value : nullptr, label);
}

DataEntryItem* makeFloat(const char* label, double value, bool hasValue) {
    auto* const item = new FloatDataEntryItem(label);
    if (hasValue) item->SetValue(value);
    return item;
}

const std::vector<Kind>& textKinds() {
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

const std::vector<Kind>& choiceKinds() {
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

QImage pictureOfItem(const Kind& kind, const State& state, int width, double scale) {
    Stage stage(QSize(width, 200));
    DataEntryCtl form(new SingleColLayoutMgr);
    form.Create(CRect(), cId, &stage.Host());
    form.AddItem(kind.makeItem(state.hasValue), kind.makeInterface());
    stage.Show();
    EXPECT_LE(form.GetItemLoc(0).right, width - 2);
    stage.Resize(QSize(width, form.GetItemLoc(0).bottom + 2));
    form.SetReadOnlyItem(0, state.isReadOnly ? 1 : 0);
    settle();
    if (state.isCurrent) form.SetFocus();
    if (state.isWorked && kind.typed != nullptr) type(kind.typed);
    if (state.isWorked && kind.typed == nullptr) press(Qt::Key_Right, Qt::ControlModifier);
    if (state.isRefused) {
        stage.Refuse();
        press(Qt::Key_Return);
    }
    settle();
    QWidget& widget = *widgetOf(form);
    return pictureOf(widget, scale, widget.rect().adjusted(1, 1, -1, -1));
}

QImage cardOfItems(const std::vector<Kind>& kinds, int width, double scale = 1) {
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
    StateCard card(static_cast<int>(std::size(cStates)) / 2);
    for (std::size_t half = 0; half < std::size(cStates); half += std::size(cStates) / 2) {
        for (const Kind& kind : kinds) {
            for (std::size_t i = half; i < half + std::size(cStates) / 2; ++i) {
                const bool isFirst = &kind == &kinds.front();
                card.Add(isFirst ? cStates[i].name : "",
                         pictureOfItem(kind, cStates[i], width, scale));
            }
        }
    }
    return card.Picture();
}

// A form with an item of every kind, of which one is current.
void addItems(DataEntryCtl& form) {
    const auto add = [&](const Kind& kind, bool hasValue) {
        form.AddItem(kind.makeItem(hasValue), kind.makeInterface());
    };
    for (const Kind& kind : textKinds()) add(kind, &kind != &textKinds()[1]);
    for (const Kind& kind : choiceKinds()) add(kind, &kind != &choiceKinds()[2]);
    form.SetReadOnlyItem(0, 1);
}

QImage pictureOfForm(DataEntryLayoutMgr* layout, QSize size, int current, double scale = 1) {
    Stage stage(size);
    DataEntryCtl form(layout);
    addItems(form);
    form.Create(CRect(), cId, &stage.Host());
    stage.Show();
    form.SetCurrItem(current);
    settle();
    return pictureOf(*widgetOf(form), scale);
}

QImage cardOfForms(double scale) {
    constexpr int cRadio = 9;
    constexpr int cAge = 1;
    StateCard card(3);
    card.Add("one column", pictureOfForm(new SingleColLayoutMgr, QSize(360, 430), cRadio, scale));
    card.Add("two columns",
             pictureOfForm(new GridLayoutMgr(0, 2, 0), QSize(520, 250), cAge, scale));
    card.Add("flow", pictureOfForm(new FlowLayoutMgr(0), QSize(600, 250), cRadio, scale));
    return card.Picture();
}

// Lists.

// What brings a list into a state, and what is keyed then; without keys it has no focus.
template <class List>
struct ListState {
    const char* name;
    std::function<void(List&)> prepare;
    std::vector<Qt::Key> keys;
    bool leaves = false;
};

template <class List>
void addStates(StateCard& card, QSize size, const std::function<std::unique_ptr<List>()>& make,
               const std::vector<ListState<List>>& states) {
    for (const ListState<List>& state : states) {
        Stage stage(size);
        const std::unique_ptr<List> list = make();
        list->Create(CRect(), cId, &stage.Host());
        stage.Show();
        if (state.prepare) state.prepare(*list);
        if (!state.keys.empty()) list->SetFocus();
        for (const Qt::Key key : state.keys) press(key);
        if (state.leaves) stage.Button().setFocus();
        settle();
        card.Add(state.name, pictureOf(*widgetOf(*list)));
    }
}

void answer(ItemListCtl& list) {
    for (int i = 0; i < list.GetItemCount(); ++i) {
        if (i % 4 != 2) list.SetItem(i, static_cast<std::uint16_t>(1 + i % 3));
    }
}

QImage cardOfItemLists() {
    StateCard card(3);
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
    addStates<ItemListCtl>(card, QSize(360, 160), make,
                           {{"no answers", {}, {}},
                            {"answers, current item", answer, {Qt::Key_Down, Qt::Key_2, Qt::Key_3}},
                            {"scrolled, without the focus", answer, {Qt::Key_End}, true},
                            {"read-only", readOnly, {Qt::Key_Down}},
                            {"second pass, a difference",
                             verify,
                             {Qt::Key_1, Qt::Key_2, Qt::Key_1, Qt::Key_3, Qt::Key_1}}});
    const auto makeSets = [] {
        auto list = std::make_unique<ItemListCtl2>(
            14, "[T|t|1][F|f|2]:0-4,9;[1|1|1][2|2|2][3|3|3][4|4|4]:5-8,11-13", -1);
        list->SetFirstItemNumber(101);
        return list;
    };
    addStates<ItemListCtl2>(card, QSize(360, 160), makeSets,
                            {{"several sets", answer, {Qt::Key_Right}}});
    return card.Picture();
}

const char* cNames[] = {"Worry", "Hope", "Calm", "Self-reliance", "Trust",
                        "Order", "Zest", "Wit",  "Patience",      "Warmth"};
int cRanges[] = {0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40, 0, 40};

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

template <class List>
void addNumberLists(StateCard& card, const std::function<std::unique_ptr<List>()>& make) {
    const auto readOnly = [](List& list) {
        scoreSome(list);
        list.SetReadOnly(1);
    };
    addStates<List>(card, QSize(360, 130), make,
                    {{"at start", {}, {}},
                     {"current entry", scoreSome<List>, {Qt::Key_Down, Qt::Key_Down}},
                     {"keyed", scoreSome<List>, {Qt::Key_3, Qt::Key_9}},
                     {"read-only entry", scoreSome<List>, {Qt::Key_Down}},
                     {"refused, focus elsewhere", scoreSome<List>, {Qt::Key_9, Qt::Key_9}, true},
                     {"read-only", readOnly, {Qt::Key_Down}}});
}

QImage cardOfNumberLists() {
    StateCard card(3);
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
        card, QSize(360, 130), [] { return std::make_unique<NumberListCtl2>(10, cNames, cRanges); },
        {{"NumberListCtl2, second pass", verify, {Qt::Key_2, Qt::Key_1, Qt::Key_Return}},
         {"second pass, a difference", verify, {Qt::Key_2, Qt::Key_2, Qt::Key_Return}}});
    return card.Picture();
}

// Profile graphs.

CStringArray* textRow(std::initializer_list<const char*> texts) {
    auto* const row = new CStringArray;
    for (const char* text : texts) row->Add(text);
    return row;
}

double* scores(std::initializer_list<double> values) {
    auto* const array = new double[values.size()];
    std::copy(values.begin(), values.end(), array);
    return array;
}

constexpr double cNoScore = ProfileChart::cDefaultMissingValue;

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

template <class Graph>
struct GraphStage {
    GraphStage() {
        graph.Create(CRect(), &stage.Host(), cId, WS_CHILD | WS_VISIBLE, nullptr);
        stage.Show();
        settle();
        widget().grab();
    }
    QWidget& widget() { return *widgetOf(graph); }
    // What the graph paints, and what has the mouse.
    QWidget& client() { return *widget().childAt(5, 5); }

    Stage stage{QSize(300, 190)};
    Shown<Graph> graph;
};

template <class Graph>
QImage pictureOfHint() {
    GraphStage<Graph> shown;
    const CPoint point = shown.graph.Point(2, 62);
    const QPoint place(point.x, point.y);
    // From elsewhere, so that it is a move.
    for (const QPoint& stop : {place + QPoint(40, 40), place}) {
        QCursor::setPos(shown.client().mapToGlobal(stop));
        settle();
    }
    QTest::mouseMove(&shown.client(), place);
    shown.graph.OnTimer(1);
    shown.graph.OnTimer(1);
    settle();
    return pictureOf(shown.widget());
}

template <class Graph>
QImage pictureOfFocus() {
    GraphStage<Graph> shown;
    shown.graph.SetFocus();
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Right, Qt::Key_Down}) press(key);
    settle();
    return pictureOf(shown.widget());
}

template <class Graph>
QImage pictureOfDrag() {
    GraphStage<Graph> shown;
    const CPoint corner = shown.graph.Legend();
    const QPoint start(corner.x + 3, corner.y + 3);
    QWidget& client = shown.client();
    QImage dragging;
    QTimer::singleShot(0, [&] {
        QTest::mouseMove(&client, start + QPoint(90, 50));
        dragging = pictureOf(shown.widget());
        QTest::mouseRelease(&client, Qt::LeftButton, {}, start + QPoint(90, 50));
    });
    QTest::mousePress(&client, Qt::LeftButton, {}, start);
    return dragging;
}

template <class Graph>
void addGraph(StateCard& card, const char* name) {
    card.Add(name, pictureOf(GraphStage<Graph>().widget()));
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
        settle();
        card.Add("with title, legends and grid", pictureOf(shown.widget()));
    }
    card.Add("a point has the focus", pictureOfFocus<Graph>());
    if constexpr (!std::is_same_v<Graph, ProfileGraphCtl4>) {
        card.Add("the legend is dragged", pictureOfDrag<Graph>());
    }
}

QImage cardOfGraphs() {
    StateCard card(4);
    addGraph<ProfileGraphCtl>(card, "ProfileGraphCtl");
    addGraph<ProfileGraphCtl2>(card, "ProfileGraphCtl2");
    addGraph<ProfileGraphCtl3>(card, "ProfileGraphCtl3");
    addGraph<ProfileGraphCtl4>(card, "ProfileGraphCtl4");
    return card.Picture();
}

class States : public testing::Test {
protected:
    States() : m_services(quietServices()) {}
    ~States() override { settle(); }

private:
    HostServicesScope m_services;
};

TEST_F(States, Forms) {
    const FixedLooks looks;
    expectStored("form-texts", cardOfItems(textKinds(), 236));
    expectStored("form-choices", cardOfItems(choiceKinds(), 338));
    expectStored("forms-100", cardOfForms(1));
    expectStored("forms-150", cardOfForms(1.5));
    expectStored("forms-200", cardOfForms(2));
}

TEST_F(States, Lists) {
    const FixedLooks looks;
    expectStored("item-lists", cardOfItemLists());
    expectStored("number-lists", cardOfNumberLists());
}

TEST_F(States, ProfileGraphs) {
    const FixedLooks looks;
    expectStored("profile-graphs", cardOfGraphs());
}

TEST_F(States, DarkTheme) {
    const FixedLooks looks(true);
    expectStored("dark-form-texts", cardOfItems(textKinds(), 236));
    expectStored("dark-form-choices", cardOfItems(choiceKinds(), 338));
    expectStored("dark-item-lists", cardOfItemLists());
    expectStored("dark-number-lists", cardOfNumberLists());
}

// What the parent has refused looks like what was there before, in the current item.
TEST_F(States, RefusedItemsLookAsTheyWere) {
    const FixedLooks looks;
    constexpr State cCurrent = {"", true, false, true, false};
    constexpr State cRefused = {"", true, false, true, true, true};
    for (const Kind& kind : textKinds()) {
        EXPECT_EQ(pictureOfItem(kind, cRefused, 236, 1), pictureOfItem(kind, cCurrent, 236, 1))
            << kind.typed;
    }
}

// The comparison itself: what the tolerance lets pass, and what not.
TEST(StatePictures, DifferencesThatCount) {
    QImage plain(64, 32, QImage::Format_RGB32);
    plain.fill(QColor(239, 239, 239));
    const auto changed = [&](const std::function<void(QPainter&)>& paint) {
        QImage picture = plain;
        QPainter painter(&picture);
        paint(painter);
        painter.end();
        return picture;
    };
    const auto line = [&](int y, int grey) {
        return changed([=](QPainter& p) { p.fillRect(4, y, 50, 1, QColor(grey, grey, grey)); });
    };
    const auto text = [&](double x, const QColor& color) {
        return changed([=](QPainter& p) {
            p.setPen(color);
            p.drawText(QPointF(x, 20), "Remarks");
        });
    };
    const struct {
        QImage one;
        QImage other;
        bool isAlike;
    } cases[] = {
        {plain, plain, true},
        {line(9, 110), line(9, 116), true},
        {line(9, 110), line(10, 110), false},
        {line(9, 110), line(11, 110), false},
        {line(9, 110), plain, false},
        {text(4, Qt::black), text(4.2, Qt::black), true},
        {text(4, Qt::black), text(5, Qt::black), false},
        {text(4, Qt::black), text(4, QColor(0, 0, 160)), false},
    };
    for (const auto& c : cases) {
        const double difference = worstDifference(c.one, c.other);
        EXPECT_EQ(difference <= cPictureTolerance, c.isAlike)
            << "case " << &c - cases << ": " << difference;
    }
}

}  // namespace
}  // namespace tessalink::test

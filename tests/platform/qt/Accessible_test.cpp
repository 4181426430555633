// What assistive technology sees of windows, and what it is told.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QVBoxLayout>
#include <QtTest>
#include <memory>
#include <sstream>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/DataEntryCtl.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/RspListItemUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TextDataEntryUI.h"
#include "dataentry/TimeDataEntryUI.h"
#include "graphs/profile/windows/ProfileGraphCtl.h"
#include "platform/qt/QtHost.h"
#include "platform/qt/UseQt.h"
#include "responselists/ItemListCtl.h"
#include "responselists/NumberListCtl.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

using Log = std::vector<std::string>;

HostServices quietServices() {
    useQt();
    HostServices services = hostServices();
    services.beep = [](UINT) {};
    services.localeValues = [] { return LocaleValues(); };
    return services;
}

std::string textOf(QAccessibleInterface& shown, QAccessible::Text kind) {
    return shown.text(kind).toStdString();
}

// "role name = value, states": the states that differ from those of a plain enabled element.
std::string lineOf(QAccessibleInterface* shown) {
    if (shown == nullptr || !shown->isValid()) return "gone";
    constexpr std::pair<QAccessible::Role, const char*> cRoles[] = {
        {QAccessible::Form, "form"},         {QAccessible::List, "list"},
        {QAccessible::Chart, "chart"},       {QAccessible::EditableText, "text"},
        {QAccessible::Grouping, "group"},    {QAccessible::CheckBox, "check"},
        {QAccessible::RadioButton, "radio"}, {QAccessible::ListItem, "item"},
        {QAccessible::Graphic, "point"},     {QAccessible::ToolTip, "tip"},
        {QAccessible::Client, "client"},
    };
    std::string line = "?";
    for (const auto& [role, name] : cRoles) {
        if (role == shown->role()) line = name;
    }
    line += " " + textOf(*shown, QAccessible::Name);
    const std::string value = textOf(*shown, QAccessible::Value);
    if (!value.empty()) line += " = " + value;
    const QAccessible::State state = shown->state();
    if (state.checked) line += ", checked";
    if (state.readOnly) line += ", read-only";
    // The toolkit's own fields are always editable.
    if (state.editable && !state.readOnly) line += ", editable";
    if (state.focused) line += ", focused";
    return line;
}

// What is told, as "event line", while it lives; client areas without a name are left out.
class Listener {
public:
    Listener() {
        s_log.clear();
        s_isOn = true;
    }
    ~Listener() { s_isOn = false; }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    static bool IsOn() { return s_isOn; }
    static Log Take() { return std::exchange(s_log, {}); }
    static void Note(QAccessibleEvent& event) {
        constexpr std::pair<QAccessible::Event, const char*> cEvents[] = {
            {QAccessible::Focus, "focus"},      {QAccessible::DescriptionChanged, "description"},
            {QAccessible::TextUpdated, "text"}, {QAccessible::StateChanged, "state"},
            {QAccessible::Alert, "alert"},      {QAccessible::ObjectReorder, "children"},
        };
        QAccessibleInterface* const shown = event.accessibleInterface();
        const bool isFocus = event.type() == QAccessible::Focus;
        // The toolkit tells of the former focus, too, and of all that fields do.
        if (isFocus && shown != nullptr && !shown->state().focused) return;
        const QObject* const object = event.object();
        const bool isField =
            object != nullptr && (object->inherits("QLineEdit") || object->inherits("QTextEdit"));
        if (!isFocus && isField) return;
        for (const auto& [type, name] : cEvents) {
            if (type != event.type()) continue;
            const std::string line = lineOf(shown);
            if (line.rfind("client", 0) != 0 && line[0] != '?') {
                s_log.push_back(name + (" " + line));
            }
        }
    }

private:
    static inline Log s_log;
    static inline bool s_isOn = false;
};

class Accessible : public testing::Test {
protected:
    Accessible() : m_services(quietServices()) {
        auto* const layout = new QVBoxLayout(&*m_dialog);
        layout->addWidget(m_holder);
        m_holder->setFixedSize(400, 300);
    }
    ~Accessible() override {
        m_dialog.reset();
        Settle();
    }

    CWnd& Host() { return m_holder->Host(); }
    void Show(CWnd& window) {
        m_dialog->show();
        m_dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&*m_dialog));
        window.SetFocus();
        Settle();
    }
    static void Settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        if (QWidget* const focus = QApplication::focusWidget()) {
            QTest::keyClick(focus, key, modifiers);
        }
    }
    static void Type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    // What shows the client area of a window.
    static QAccessibleInterface* Shown(const CWnd& window) {
        return QAccessible::queryAccessibleInterface(widgetOf(window)->childAt(200, 250));
    }
    static Log LinesOf(QAccessibleInterface& shown, int count) {
        Log lines;
        for (int i = 0; i < count; ++i) lines.push_back(lineOf(shown.child(i)));
        return lines;
    }

private:
    HostServicesScope m_services;
    Listener m_listener;

protected:
    std::unique_ptr<QDialog> m_dialog = std::make_unique<QDialog>();
    WindowHolder* m_holder = new WindowHolder;
};

class AccessibleForm : public Accessible {
protected:
    AccessibleForm() {
        auto* const text = new TextDataEntryUI(90, 20, 0, 8);
        m_form->AddItem(new TextDataEntryItem("Ada", "Name"), text);
        m_form->AddItem(new TextDataEntryItem(nullptr, "Born\nat"), text);
        m_form->AddItem(new IntegerDataEntryItem(42, "Age"), new IntegerDataEntryUI(90, 3));
        m_form->AddItem(new IntegerDataEntryItem("Begun"), new TimeDataEntryUI(90, 1));
        m_form->AddItem(new IntegerDataEntryItem(5, "Speaks"),
                        new CheckBoxItemUI("[Dutch|d][Irish|i][other|o]", 90));
        m_form->AddItem(new IntegerDataEntryItem("Sex"),
                        new RadioBtnItemUI("[female|f|1][male|m|2]", 90));
        m_form->AddItem(new IntegerDataEntryItem(2, "Calm"),
                        new RspListItemUI("[never|1|1][often|2|2]", 90));
        m_form->GetItem(1)->SetRequired(true);
        m_form->SetReadOnlyItem(6, 1);
        m_form->Create(CRect(), 7, &Host());
        Show(*m_form);
        Listener::Take();
    }
    QAccessibleInterface& Item(int index) { return *Shown(*m_form)->child(index); }

    std::unique_ptr<DataEntryCtl> m_form = std::make_unique<DataEntryCtl>(new SingleColLayoutMgr);
};

TEST_F(AccessibleForm, EachItemHasItsNameRoleValueAndStates) {
    EXPECT_EQ(lineOf(Shown(*m_form)), "form Items");
    const Log expected = {"text Name = Ada, editable, focused",
                          "text Born at, editable",
                          "text Age = 42, editable",
                          "text Begun, editable",
                          "group Speaks = Dutch, other",
                          "group Sex",
                          "group Calm = often, read-only"};
    EXPECT_EQ(LinesOf(*Shown(*m_form), 7), expected);
    EXPECT_EQ(textOf(Item(1), QAccessible::Description), "required");
    const Log boxes = {"check Dutch, checked", "check Irish", "check other, checked"};
    EXPECT_EQ(LinesOf(Item(4), 3), boxes);
    const Log buttons = {"radio never, read-only", "radio often, checked, read-only"};
    EXPECT_EQ(LinesOf(Item(6), 2), buttons);
    EXPECT_EQ(Item(4).childCount(), 3);
    EXPECT_EQ(Item(0).childCount(), 0);
    QAccessibleInterface* const irish = Item(4).child(1);
    EXPECT_EQ(irish->parent(), &Item(4));
    EXPECT_EQ(Item(4).indexOfChild(irish), 1);
    const QPoint middle = irish->rect().center();
    EXPECT_EQ(Shown(*m_form)->childAt(middle.x(), middle.y()), &Item(4));
    EXPECT_EQ(Item(4).childAt(middle.x(), middle.y()), irish);
    EXPECT_EQ(Item(4).child(3), nullptr);
    EXPECT_EQ(Item(0).textInterface()->text(0, -1).toStdString(), "Ada");
}

TEST_F(AccessibleForm, KeysAreFollowed) {
    const struct {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* typed;
        Log told;
    } cases[] = {
        {Qt::Key_Down, {}, nullptr, {"focus text Born at, editable, focused"}},
        {Qt::Key_Return,
         {},
         "Oslo",
         {"text text Born at = Oslo, editable, focused", "focus text Age = 42, editable, focused"}},
        {Qt::Key_Down, {}, nullptr, {"focus text Begun = __:__, editable, focused"}},
        {Qt::Key_Down, {}, nullptr, {"focus group Speaks = Dutch, other, focused"}},
        {Qt::Key_Right, Qt::ControlModifier, nullptr, {"focus check Dutch, checked, focused"}},
        {Qt::Key_Right, Qt::ControlModifier, nullptr, {"focus check Irish, focused"}},
        {Qt::Key_Space,
         {},
         nullptr,
         {"description group Speaks = Dutch, Irish, other, focused", "state check Dutch, checked",
          "state check Irish, checked, focused", "state check other, checked"}},
        {Qt::Key_Down, {}, nullptr, {"focus group Sex, focused"}},
        {Qt::Key_M,
         {},
         nullptr,
         {"description group Sex = male, focused", "state radio female",
          "state radio male, checked"}},
        {Qt::Key_Down, {}, nullptr, {"focus group Calm = often, read-only, focused"}},
    };
    for (const auto& c : cases) {
        if (c.typed != nullptr) Type(c.typed);
        Listener::Take();
        Press(c.key, c.modifiers);
        EXPECT_EQ(Listener::Take(), c.told) << &c - cases;
    }
    EXPECT_EQ(Shown(*m_form)->focusChild(), &Item(6));
}

TEST_F(AccessibleForm, ProgramsAndReadersChange) {
    m_form->SetReadOnlyItem(2, 1);
    EXPECT_EQ(Listener::Take(), Log{"state text Age = 42, read-only"});
    static_cast<IntegerDataEntryItem*>(m_form->GetItem(2))->SetValue(43);
    m_form->OnDataChanged(2);
    EXPECT_EQ(Listener::Take(), Log{"text text Age = 43, read-only"});
    QAccessibleInterface* const male = Item(5).child(1);
    male->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(m_form->GetCurrItemIdx(), 5);
    EXPECT_EQ(lineOf(male), "radio male, checked");
    Item(6).child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    EXPECT_EQ(lineOf(Item(6).child(0)), "radio never, read-only") << "it is read-only";
    Item(0).actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(m_form->GetCurrItemIdx(), 0);
}

TEST_F(AccessibleForm, NothingDangles) {
    QAccessibleInterface* const window = Shown(*m_form);
    QAccessibleInterface* const item = &Item(4);
    QAccessibleInterface* const choice = item->child(1);
    QAccessible::Id ids[] = {QAccessible::uniqueId(window), QAccessible::uniqueId(item),
                             QAccessible::uniqueId(choice)};
    m_form.reset();
    // The widgets go with the next events; until then there is nothing to see.
    EXPECT_EQ(lineOf(item), "gone");
    EXPECT_EQ(lineOf(choice), "gone");
    EXPECT_EQ(item->child(0), nullptr);
    EXPECT_EQ(textOf(*choice, QAccessible::Name), "");
    choice->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    item->rect();
    Settle();
    for (const QAccessible::Id id : ids) EXPECT_EQ(QAccessible::accessibleInterface(id), nullptr);
}

TEST_F(Accessible, AnswersAreSpokenAsTheyAreKeyed) {
    ItemListCtl list(3, "[no|n|0][yes|y|1]", -1);
    list.Create(CRect(), 7, &Host());
    Show(list);
    list.SetItem(1, 0);
    EXPECT_EQ(lineOf(Shown(list)), "list , focused");
    const Log items = {"item 1:, focused", "item 2: = no", "item 3:"};
    EXPECT_EQ(LinesOf(*Shown(list), 3), items);
    Listener::Take();
    Type("y");
    const Log keyed = {"description item 1: = yes, focused", "focus item 2: = no, focused"};
    EXPECT_EQ(Listener::Take(), keyed);
    QAccessibleInterface* const last = Shown(list)->child(2);
    list.SetLegend(2, "[a|a]", -1);
    EXPECT_EQ(lineOf(last), "gone");
    EXPECT_EQ(Listener::Take().back(), "children list , focused");

    DoubleKeying keying;
    list.SetItem(0, 0);
    list.BeginVerification(keying);
    list.SetLegend(2, "[no|n|0][yes|y|1]", 0);
    list.BeginVerification(keying);
    Listener::Take();
    Type("y");
    EXPECT_EQ(Listener::Take(), Log({"description item 1: = First no, now yes, focused",
                                     "alert item 1: = First no, now yes, focused"}));
    EXPECT_EQ(textOf(*Shown(list)->child(0), QAccessible::Description), "First no, now yes");
}

TEST_F(Accessible, TheBoxOfNumbersIsCalledLikeItsEntry) {
    const char* names[] = {"Worry", "Hope", "Calm"};
    NumberListCtl3 list(3, names, nullptr, 99);
    list.SetItem(0, 7);
    list.SetReadOnlyItem(2);
    list.Create(CRect(), 7, &Host());
    Show(list);
    const Log items = {"item Worry = 7, focused", "item Hope", "item Calm, read-only"};
    EXPECT_EQ(LinesOf(*Shown(list), 3), items);
    Listener::Take();
    Type("4");
    Listener::Take();
    Press(Qt::Key_Down);
    const Log moved = Listener::Take();
    EXPECT_EQ(std::count(moved.begin(), moved.end(), "description item Worry = 4, focused"), 1)
        << "the value is told";
    EXPECT_EQ(moved.back(), "focus text Hope, editable, focused");
    Press(Qt::Key_Down);
    EXPECT_EQ(Listener::Take().back(), "focus text Calm, read-only, focused");
}

TEST_F(Accessible, HintsOfGraphsAreSpoken) {
    ProfileGraphCtl graph(20, 80, 10, 0, 1, 0, 300, 200);
    auto* const texts = new CStringArray;
    for (const char* text : {"", "Worry", "Hope"}) texts->Add(text);
    graph.SetXLegend(texts, nullptr, nullptr, nullptr);
    graph.AddProfile("Anna", new double[2]{35, 62}, 0, 1);
    graph.Create(CRect(), &Host(), 7, WS_CHILD | WS_VISIBLE, "Scores");
    Show(graph);
    EXPECT_EQ(lineOf(Shown(graph)), "chart Scores, focused");
    Listener::Take();
    for (const auto& [name, value] : {std::pair("Worry", "35"), std::pair("Hope", "62")}) {
        Press(Qt::Key_Right);
        const std::string point =
            std::string("point Anna, ") + name + " = " + value + ", read-only, focused";
        const Log told = Listener::Take();
        for (const char* event : {"focus ", "description ", "alert "}) {
            EXPECT_EQ(std::count(told.begin(), told.end(), event + point), 1) << event << point;
        }
        EXPECT_EQ(textOf(*Shown(graph)->focusChild(), QAccessible::Description),
                  std::string(name) + " = " + value + " (Anna)");
    }
    graph.RemoveProfiles();
    EXPECT_EQ(lineOf(Shown(graph)->child(0)), "gone");
}

}  // namespace

bool isListening() {
    return Listener::IsOn();
}

void noteAccessible(QAccessibleEvent& event) {
    if (isListening()) Listener::Note(event);
}

}  // namespace tessalink::test

// Without a screen the toolkit takes nobody to listen, and tells nothing, not even to a handler
// that was installed. So the program has these in the place of the toolkit's own.
bool QAccessible::isActive() {
    return tessalink::test::isListening();
}

void QAccessible::updateAccessibility(QAccessibleEvent* event) {
    tessalink::test::noteAccessible(*event);
}

// Random keys, clicks and calls on random forms, against a plain model of what a form is.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "tests/support/Dice.h"
#include "tests/support/FormHost.h"

using tessalink::HeadlessSystem;
using tessalink::test::Dice;
using tessalink::test::FormHost;

namespace {

using Note = FormHost::Note;

constexpr int cDigits = 4;
/// Few enough that all items show.
constexpr int cMaxItems = 9;

enum class Kind { Number, Text, Radio, Checks };

/// The parent's rule: some values it does not like, and some items it does not want clicked.
bool refusesValue(bool isNull, int value) {
    return !isNull && value % 5 == 3;
}
bool refusesClick(int index) {
    return index % 4 == 3;
}

/// A form as its manual tells it, with one column that shows whole.
class Model {
public:
    struct Item {
        Kind kind = Kind::Number;
        bool isReadOnly = false;
        bool isNull = true;
        std::string text;  ///< of numbers and texts
        int value = 0;     ///< of choices
    };

    void Focus() {
        if (!m_hasFocus) SetCurrent(current);
    }
    void SetCurrent(int index) {
        if (index != current && !Commit()) return;
        // What is being typed into the current item is not disturbed.
        const bool isThere = m_hasFocus && index == current;
        current = index;
        notes.push_back({m_hasFocus ? 4 : NM_SETFOCUS, current});
        m_hasFocus = m_wasFocused = true;
        if (!isThere) Load();
    }
    void Leave() {
        if (!m_hasFocus || !Commit()) return;
        m_hasFocus = false;
        notes.push_back({NM_KILLFOCUS, -1});
    }
    // What is still refused goes with the window.
    void Recreate() {
        Leave();
        m_hasFocus = m_wasFocused = false;
    }
    void Click(int index) {
        // The window over the current item gets clicks there.
        if (index == current && m_wasFocused) return SetCurrent(index);
        notes.push_back({3, index});
        if (refusesClick(index)) {
            if (!m_hasFocus) Load();
            m_hasFocus = m_wasFocused = true;
        } else {
            SetCurrent(index);
        }
    }
    void Type(char ch) {
        if (!m_hasFocus) return;
        if (IsChoice()) {
            Choose(ch);
        } else if (!Now().isReadOnly) {
            const std::string text = m_box.substr(0, m_start) + ch + m_box.substr(m_end);
            const bool fits = Now().kind == Kind::Text || (ch >= '0' && ch <= '9');
            if (!fits || text.size() > cDigits) return;
            m_box = text;
            m_end = ++m_start;
        }
    }
    void Press(UINT key) {
        if (!m_hasFocus) return;
        if (key == VK_TAB) return Leave();
        if (!IsChoice() && InBox(key)) return;
        const int last = static_cast<int>(items.size()) - 1;
        switch (key) {
            case VK_RETURN:
                return Return();
            case VK_UP:
                return Go(current - 1);
            case VK_DOWN:
                return Go(current + 1);
            case VK_LEFT:
                return Go(std::max(current - 1, 0));
            case VK_RIGHT:
                return Go(std::min(current + 1, last));
            case VK_PRIOR:
                return current == 0 ? Go(-1) : void();
            case VK_NEXT:
                return current == last ? Go(last + 1) : void();
            default:
                return;
        }
    }
    void SetReadOnly(int index, bool readOnly) {
        if (index == current && m_hasFocus) Commit();
        Item& item = items[static_cast<std::size_t>(index)];
        const bool changes = item.isReadOnly != readOnly;
        item.isReadOnly = readOnly;
        if (changes && index == current && m_hasFocus) Load();
    }

    std::vector<Item> items;
    std::vector<Note> notes;
    int current = 0;

private:
    Item& Now() { return items[static_cast<std::size_t>(current)]; }
    bool IsChoice() { return Now().kind == Kind::Radio || Now().kind == Kind::Checks; }

    void Load() {
        if (IsChoice()) return;
        m_box = Now().isNull ? "" : Now().text;
        m_start = 0;
        m_end = m_box.size();
    }
    /// Keeps what was typed; a refusal leaves everything as it was.
    bool Commit() {
        if (!m_hasFocus || IsChoice() || Now().isReadOnly) return true;
        Item before = Now();
        if (m_box == (before.isNull ? "" : before.text)) return true;
        Now().isNull = m_box.find_first_not_of(' ') == std::string::npos;
        Now().text = Now().kind == Kind::Number && !Now().isNull
                         ? std::to_string(std::atoi(m_box.c_str()))
                         : m_box;
        notes.push_back({1, current});
        if (refusesValue(Now().isNull, std::atoi(Now().text.c_str()))) {
            Now() = before;
            notes.push_back({4, current});
            Load();
            return false;
        }
        notes.push_back({2, current});
        Load();
        return true;
    }
    /// Whether the box uses the key itself.
    bool InBox(UINT key) {
        const bool marked = m_start != m_end;
        switch (key) {
            case VK_LEFT:
                if (!marked && m_start == 0) return false;
                m_start = m_end = marked ? m_start : m_start - 1;
                return true;
            case VK_RIGHT:
                if (!marked && m_end == m_box.size()) return false;
                m_start = m_end = marked ? m_end : m_end + 1;
                return true;
            case VK_HOME:
                m_start = m_end = 0;
                return true;
            case VK_END:
                m_start = m_end = m_box.size();
                return true;
            case VK_BACK:
                if (Now().isReadOnly) return true;
                if (!marked && m_start > 0) --m_start;
                m_box.erase(m_start, m_end - m_start);
                m_end = m_start;
                return true;
            case VK_ESCAPE:
                Load();
                return true;
            default:
                return false;
        }
    }
    void Return() {
        if (!IsChoice() && !Commit()) return;
        for (int i = current + 1; i < static_cast<int>(items.size()); ++i) {
            if (!items[static_cast<std::size_t>(i)].isReadOnly) return SetCurrent(i);
        }
        if (!IsChoice()) notes.push_back({6, current});
    }
    void Go(int target) {
        const int last = static_cast<int>(items.size()) - 1;
        const int bounded = std::clamp(target, 0, last);
        if (bounded != current) SetCurrent(bounded);
        if (target != bounded) notes.push_back({target < 0 ? 5 : 6, current});
    }
    void Choose(char ch) {
        // [a|a1|1][b|b2|2][c|c3|4]
        const std::size_t place = std::string("abc123").find(ch);
        if (place == std::string::npos || Now().isReadOnly) return;
        const int code = 1 << place % 3;
        const bool radio = Now().kind == Kind::Radio;
        if (!(radio && !Now().isNull && Now().value == code)) {
            const Item before = Now();
            const int changed = radio ? code : Now().value ^ code;
            Now().isNull = changed == 0;
            Now().value = changed;
            notes.push_back({1, current});
            if (refusesValue(Now().isNull, changed)) {
                Now() = before;
                return;
            }
            notes.push_back({2, current});
        }
        if (!radio) return;
        for (int i = current + 1; i < static_cast<int>(items.size()); ++i) {
            if (!items[static_cast<std::size_t>(i)].isReadOnly) return SetCurrent(i);
        }
        notes.push_back({6, current});
    }

    bool m_hasFocus = false;
    bool m_wasFocused = false;
    std::string m_box;
    std::size_t m_start = 0;
    std::size_t m_end = 0;
};

/// The form itself, with the same items.
class Subject {
public:
    Subject() : m_form(new SingleColLayoutMgr) {
        m_interfaces = {new IntegerDataEntryUI(60, cDigits), new TextDataEntryUI(60, cDigits, 1, 8),
                        new RadioBtnItemUI("[a|a1|1][b|b2|2][c|c3|4]", 60),
                        new CheckBoxItemUI("[a|a1|1][b|b2|2][c|c3|4]", 60)};
        m_host.answer = [](const DATAENTRYCTL_NOTIFICATION& told) -> LRESULT {
            if (told.hdr.code == DATAENTRY_CLICKED) return refusesClick(told.itemIndex);
            if (told.hdr.code != DATAENTRY_CHANGING) return 0;
            return refusesValue(told.item->IsNull() != 0, ValueOf(*told.item));
        };
    }
    ~Subject() {
        // Interfaces without items belong to nobody.
        for (std::size_t i = 0; i < m_interfaces.size(); ++i) {
            if ((m_used & (1U << i)) == 0) delete m_interfaces[i];
        }
    }

    void Add(Kind kind) {
        const auto index = static_cast<std::size_t>(kind);
        m_used |= 1U << index;
        DataEntryItem* item = kind == Kind::Text
                                  ? static_cast<DataEntryItem*>(new TextDataEntryItem)
                                  : new IntegerDataEntryItem;
        m_form.AddItem(item, m_interfaces[index]);
    }
    void Create() { m_form.Create(CRect(0, 0, 600, 600), 1, &m_host); }

    static int ValueOf(const DataEntryItem& item) {
        if (const auto* text = DYNAMIC_DOWNCAST(TextDataEntryItem, &item)) {
            return std::atoi(text->GetValue().GetString());
        }
        return static_cast<const IntegerDataEntryItem&>(item).GetValue();
    }
    CPoint LabelOf(int index) {
        CPoint point = m_form.GetItemLoc(index).TopLeft() + CSize(8, 4);
        m_form.ClientToScreen(&point);
        return point;
    }
    DataEntryCtl& Form() { return m_form; }
    FormHost& Host() { return m_host; }

private:
    FormHost m_host;
    DataEntryCtl m_form;
    std::vector<DataEntryItemUI*> m_interfaces;
    unsigned m_used = 0;
};

class Trial {
public:
    explicit Trial(Dice& dice) : m_dice(dice) {
        for (int i = 1 + Below(cMaxItems); i > 0; --i) {
            const auto kind = static_cast<Kind>(Below(4));
            m_model.items.emplace_back().kind = kind;
            m_subject.Add(kind);
        }
        m_subject.Create();
    }

    void Step() {
        static constexpr UINT cKeys[] = {VK_RETURN, VK_UP,  VK_DOWN, VK_LEFT, VK_RIGHT, VK_HOME,
                                         VK_END,    VK_TAB, VK_BACK, VK_NEXT, VK_PRIOR, VK_ESCAPE};
        const int index = Below(static_cast<int>(m_model.items.size()));
        auto& windows = HeadlessSystem::Default();
        switch (Below(13)) {
            case 0:
                m_log += " click" + std::to_string(index);
                m_model.Click(index);
                windows.Click(m_subject.LabelOf(index));
                break;
            case 1:
                m_log += " focus";
                m_model.Focus();
                if (!HasFocus()) m_subject.Form().SetFocus();
                break;
            case 2: {
                const bool readOnly = m_dice.OneIn(3);
                m_log += " readonly" + std::to_string(index) + (readOnly ? "+" : "-");
                m_model.SetReadOnly(index, readOnly);
                m_subject.Form().SetReadOnlyItem(index, readOnly ? 1 : 0);
                break;
            }
            case 3:
                m_log += " current" + std::to_string(index);
                m_model.SetCurrent(index);
                m_subject.Form().SetCurrItem(index);
                break;
            case 4:
                if (!m_dice.OneIn(4)) break;
                m_log += " recreate";
                m_model.Recreate();
                m_subject.Form().DestroyWindow();
                m_subject.Create();
                break;
            case 5:
            case 6:
            case 7:
            case 8: {
                const UINT key = m_dice.Pick(cKeys);
                m_log += " key" + std::to_string(key);
                m_model.Press(key);
                if (HasFocus()) windows.PressKey(key);
                break;
            }
            default: {
                const char ch = m_dice.Pick(std::string_view("0123abc8 "));
                m_log += std::string(" '") + ch + "'";
                m_model.Type(ch);
                if (HasFocus()) windows.Type(std::string_view(&ch, 1));
            }
        }
        windows.Pump();
    }

    void Compare() {
        ASSERT_EQ(m_subject.Host().Taken(), std::exchange(m_model.notes, {})) << m_log;
        ASSERT_EQ(m_subject.Form().GetCurrItemIdx(), m_model.current) << m_log;
        for (int i = 0; i < m_subject.Form().GetItemCount(); ++i) {
            const auto& expected = m_model.items[static_cast<std::size_t>(i)];
            const DataEntryItem& item = *m_subject.Form().GetItem(i);
            ASSERT_EQ(item.IsNull() != 0, expected.isNull) << m_log;
            if (expected.isNull) continue;
            const bool isChoice = expected.kind == Kind::Radio || expected.kind == Kind::Checks;
            ASSERT_EQ(Subject::ValueOf(item),
                      isChoice ? expected.value : std::atoi(expected.text.c_str()))
                << m_log;
        }
    }

private:
    int Below(int count) { return static_cast<int>(m_dice.Below(static_cast<std::size_t>(count))); }
    bool HasFocus() { return m_subject.Form().IsChild(CWnd::GetFocus()) != 0; }

    Dice& m_dice;
    Model m_model;
    Subject m_subject;
    std::string m_log;
};

// TESSALINK_FORM_EVENTS sets another number of events than a short run has.
TEST(FormModel, RandomEventsAgree) {
    const char* wanted = std::getenv("TESSALINK_FORM_EVENTS");
    const int events = wanted != nullptr ? std::atoi(wanted) : 100'000;
    constexpr int cEventsPerForm = 60;
    Dice dice(2026);
    for (int done = 0; done < events && !testing::Test::HasFatalFailure(); done += cEventsPerForm) {
        Trial trial(dice);
        for (int i = 0; i < cEventsPerForm && !testing::Test::HasFatalFailure(); ++i) {
            trial.Step();
            trial.Compare();
        }
    }
}

}  // namespace

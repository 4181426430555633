#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
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
#include "tests/support/Dice.h"
#include "tests/support/EventCount.h"
#include "tests/support/FormModel.h"
#include "tests/support/HostServicesScope.h"
#include "tests/support/InputDriver.h"

namespace tessalink::test {

/// Tells where the choices of its items lie.
template <class Interface>
class OpenChoices : public Interface {
public:
    using Interface::Interface;

    void Tell(FieldKind& kind) const {
        const int height = this->choice_height();
        int right = this->first_x();
        int bottom = 0;
        for (const auto& choice : this->m_choices) {
            const CRect place(CPoint(choice.x, choice.y), CSize(choice.width, height));
            kind.cells.push_back({place, choice.keys.GetString(), choice.value});
            right = std::max<int>(right, place.right);
            bottom = std::max<int>(bottom, place.bottom + height / 4);
        }
        // The total width has half a wide letter more, which takes no click.
        kind.choosing = CRect(this->first_x(), height / 2, right, bottom - height / 2);
    }
};

/// An item as a host writes one, whose text is held backwards.
class BackwardItem : public DataEntryItem {
public:
    int SetNull(int isNull) override {
        text.clear();
        return DataEntryItem::SetNull(isNull);
    }

    std::string text;
};

/// An edit box as a host writes one.
class HostEdit : public CEdit {
public:
    explicit HostEdit(TextDataEntryUI& itemUI) : m_interface(itemUI) {}

    UINT OnGetDlgCode() override { return DLGC_WANTALLKEYS; }
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override {
        if (key == VK_TAB) return m_interface.OnTab();
        if (key == VK_ESCAPE) return m_interface.OnCancel();
        if (key == VK_RETURN && !IsKeyDown(VK_CONTROL)) return m_interface.OnReturn();
        const bool isForForm = key == VK_UP || key == VK_DOWN || key == VK_PRIOR || key == VK_NEXT;
        if (isForForm) return m_interface.OnEditKey(key, repeat, flags);
        CEdit::OnKeyDown(key, repeat, flags);
    }
    void OnChar(UINT ch, UINT repeat, UINT flags) override {
        const bool isKey = ch == '\t' || ch == '\r' || ch == VK_ESCAPE;
        if (!isKey) CEdit::OnChar(ch, repeat, flags);
    }

private:
    TextDataEntryUI& m_interface;
};

class BackwardItemUI : public TextDataEntryUI {
public:
    using TextDataEntryUI::TextDataEntryUI;

protected:
    CEdit* create_edit_box() override { return new HostEdit(*this); }
    CString get_curr_item_text_value() override {
        const std::string& text = static_cast<BackwardItem*>(GetCurrItem())->text;
        return std::string(text.rbegin(), text.rend()).c_str();
    }
    void set_item_text_value(CString text, DataEntryItem* item) override {
        CString trimmed = text;
        item->SetNull(trimmed.Trim().IsEmpty() ? 1 : 0);
        const std::string_view typed = text.View();
        if (item->IsNull() == 0) {
            static_cast<BackwardItem*>(item)->text.assign(typed.rbegin(), typed.rend());
        }
    }
};

/// A random form and its model, and random events on both.
class FormTrial {
public:
    FormTrial(Dice& dice, InputDriver& driver) : m_dice(dice), m_driver(driver) {
        HostServices services = hostServices();
        services.beep = [this](UINT) { m_told.push_back({FormNote::cBell, 0}); };
        m_model.locale = {m_dice.OneIn(3) ? ',' : '.', !m_dice.OneIn(3)};
        LocaleValues values;
        values.decimalSeparator = m_model.locale.point == ',' ? "," : ".";
        values.is24Hour = m_model.locale.is24Hour;
        values.morningIndicator = "AM";
        values.afternoonIndicator = "PM";
        services.localeValues = [values] { return values; };
        m_services = std::make_unique<HostServicesScope>(std::move(services));
        m_driver.answer = [this](const NMHDR& header) { return Answer(header); };
        m_form = std::make_unique<DataEntryCtl>(MakeLayout());
        m_kinds.resize(std::size(cMakers));
        m_interfaces.resize(std::size(cMakers));
        for (int i = 1 + Below(cMaxItems); i > 0; --i) Add();
        m_model.autoAdvance = !m_dice.OneIn(5);
        m_form->SetAutoAdvance(m_model.autoAdvance ? 1 : 0);
        m_model.tabMoves = m_dice.OneIn(2);
        m_form->TabMoves(m_model.tabMoves);
        Create();
    }
    ~FormTrial() {
        m_form.reset();
        m_driver.Pump();
        m_driver.answer = nullptr;
    }

    void Step() {
        m_model.refusesChanges = m_dice.OneIn(4);
        m_model.refusesClicks = m_dice.OneIn(4);
        int left = Below(cAllWeights);
        const Event* event = cEvents;
        for (; left >= event->weight; ++event) left -= event->weight;
        m_log += std::string(" ") + event->name;
        if (m_model.refusesChanges) m_log += "!";
        (this->*event->happens)();
        m_driver.Pump();
    }

    void Compare() {
        m_count += m_told.size();
        ASSERT_EQ(std::exchange(m_told, {}), std::exchange(m_model.notes, {})) << Story();
        ASSERT_EQ(m_form->GetCurrItemIdx(), m_model.current) << Story();
        const CRect shown = m_form->GetVisibleArea();
        ASSERT_TRUE(shown.TopLeft() == m_model.scroll)
            << shown.left << "," << shown.top << " not " << m_model.scroll.x << ","
            << m_model.scroll.y << " in " << shown.Width() << "x" << shown.Height() << " of "
            << m_model.Extent().cx << "x" << m_model.Extent().cy << Story();
        ASSERT_TRUE(shown.Size() == m_model.client) << Story();
        for (int i = 0; i < m_form->GetItemCount(); ++i) {
            const FormItem& expected = m_model.items[static_cast<std::size_t>(i)];
            ASSERT_TRUE(m_form->GetItemLoc(i) == expected.place) << i << Story();
            FormItem own = expected;
            Read(*m_form->GetItem(i), own);
            ASSERT_TRUE(own.SameValue(expected))
                << i << ": " << own.value << "/" << own.number << "/" << own.text << Story();
            ASSERT_EQ(own.isReadOnly, expected.isReadOnly) << i << Story();
        }
        CompareBox();
        CheckBars();
    }

    std::size_t NoteCount() const { return m_count; }

private:
    static constexpr int cMaxItems = 9;
    static constexpr int cMaxWidth = 900;
    static constexpr int cMaxHeight = 640;

    struct Event {
        int weight;
        const char* name;
        void (FormTrial::*happens)();
    };
    static const Event cEvents[];
    static const int cAllWeights;

    // Making forms.

    struct Maker {
        FieldKind kind;
        DataEntryItemUI* (*make)(FieldKind& kind, CDC& dc);
    };
    template <class Interface, class... Arguments>
    static DataEntryItemUI* MakeChoice(FieldKind& kind, CDC& dc, Arguments... arguments) {
        auto* made = new OpenChoices<Interface>(arguments...);
        // Measuring places the choices.
        IntegerDataEntryItem item;
        CSize size;
        made->OnMeasureItem(&item, &dc, size);
        made->Tell(kind);
        return made;
    }
    static inline const Maker cMakers[] = {
        {{FieldKind::Text, 8},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* {
             return new TextDataEntryUI(40, k.limit, 0, 12);
         }},
        {{FieldKind::Lines, 12},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* {
             return new TextDataEntryUI(0, k.limit, 3, 20);
         }},
        {{FieldKind::Backward, 6},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* {
             return new BackwardItemUI(40, k.limit, 0, 8);
         }},
        {{FieldKind::Integer, 3},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* {
             return new IntegerDataEntryUI(30, k.limit);
         }},
        {{FieldKind::Integer, 11},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* { return new IntegerDataEntryUI(0, k.limit); }},
        {{FieldKind::Implied, 6, 2, true},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* {
             return new ImplDecIntegerDataEntryUI(50, k.limit, k.decimals, 1);
         }},
        {{FieldKind::Implied, 4, 0, true},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* {
             return new ImplDecIntegerDataEntryUI(50, k.limit, k.decimals, 1);
         }},
        {{FieldKind::Float, 5, 1, false},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* {
             return new FloatDataEntryUI(50, k.limit, k.decimals, 0);
         }},
        {{FieldKind::Float, 0, 3, true},
         [](FieldKind& k, CDC&) -> DataEntryItemUI* {
             return new FloatDataEntryUI(50, k.limit, k.decimals, 1);
         }},
        {{FieldKind::Time},
         [](FieldKind&, CDC&) -> DataEntryItemUI* { return new TimeDataEntryUI(60, 0); }},
        {{FieldKind::Time, 0, 0, false, true},
         [](FieldKind&, CDC&) -> DataEntryItemUI* { return new TimeDataEntryUI(60, 1); }},
        {{FieldKind::Checks},
         [](FieldKind& k, CDC& dc) {
             return MakeChoice<CheckBoxItemUI>(k, dc, "[a|a1][b|b2][][c|c3][d||3]", 60);
         }},
        {{FieldKind::Checks},
         [](FieldKind& k, CDC& dc) {
             return MakeChoice<CheckBoxItemColUI>(k, dc, "[one|a1|1][b|b2|6][][c|c3b|4]", 0);
         }},
        {{FieldKind::Radio},
         [](FieldKind& k, CDC& dc) {
             return MakeChoice<RadioBtnItemUI>(k, dc, "[yes|a1|1][no|b2|0][maybe|c3a|3]", 60);
         }},
        {{FieldKind::Radio},
         [](FieldKind& k, CDC& dc) {
             return MakeChoice<RspListItemUI>(k, dc, "[T|aA1][F|bB2][?|c3]", 60);
         }},
    };

    DataEntryLayoutMgr* MakeLayout() {
        FormLayout& layout = m_model.layout;
        layout.type = static_cast<FormLayout::Type>(Below(5));
        m_log += " layout" + std::to_string(layout.type);
        if (layout.type == FormLayout::Column) return new SingleColLayoutMgr;
        if (!layout.IsGrid()) return new FlowLayoutMgr(layout.Horizontal() ? 1 : 0);
        layout.rows = Below(5);
        layout.columns = Below(5);
        m_log += "(" + std::to_string(layout.rows) + "," + std::to_string(layout.columns) + ")";
        return new GridLayoutMgr(static_cast<unsigned>(layout.rows),
                                 static_cast<unsigned>(layout.columns),
                                 layout.type == FormLayout::GridDown ? 1 : 0);
    }
    void Add() {
        CClientDC dc(&m_driver.Host());
        const auto index = static_cast<std::size_t>(Below(static_cast<int>(std::size(cMakers))));
        FieldKind& kind = m_kinds[index];
        if (m_interfaces[index] == nullptr) {
            kind = cMakers[index].kind;
            m_interfaces[index] = cMakers[index].make(kind, dc);
        }
        FormItem& added = m_model.items.emplace_back();
        added.kind = &kind;
        added.isReadOnly = m_dice.OneIn(6);
        if (m_dice.OneIn(3)) {
            added.isNull = false;
            added.value = kind.IsChoice() ? Below(5) : m_dice.OneIn(5) ? -7 : Below(2400);
            added.number = added.value * 0.37;
            added.text = "Ab";
        }
        DataEntryItem* item = MakeItem(added);
        static const char* const labels[] = {"", "A", "A label", "Two\nlines", "One\r\nTwo\nThree"};
        item->SetLabel(m_dice.Pick(labels));
        item->SetReadOnly(added.isReadOnly ? 1 : 0);
        m_log += " item" + std::to_string(index) + (added.isReadOnly ? "r" : "");
        m_interfaces[index]->OnMeasureItem(item, &dc, added.size);
        m_form->AddItem(item, m_interfaces[index]);
    }
    static DataEntryItem* MakeItem(FormItem& of) {
        switch (of.kind->type) {
            case FieldKind::Text:
            case FieldKind::Lines:
                of.value = 0;
                return new TextDataEntryItem(of.isNull ? nullptr : of.text.c_str());
            case FieldKind::Backward: {
                of.value = 0;
                auto* item = new BackwardItem;
                item->SetNull(of.isNull ? 1 : 0);
                if (!of.isNull) item->text = of.text;
                return item;
            }
            case FieldKind::Float: {
                of.value = 0;
                of.text.clear();
                auto* item = new FloatDataEntryItem("");
                if (!of.isNull) item->SetValue(of.number);
                return item;
            }
            default: {
                of.text.clear();
                auto* item = new IntegerDataEntryItem;
                if (!of.isNull) item->SetValue(of.value);
                return item;
            }
        }
    }
    static void Read(DataEntryItem& item, FormItem& into) {
        into.isNull = item.IsNull() != 0;
        into.isReadOnly = item.IsReadOnly() != 0;
        if (into.isNull && !into.kind->IsChoice()) return;
        if (into.kind->type == FieldKind::Backward) {
            into.text = static_cast<const BackwardItem&>(item).text;
        } else if (const auto* text = DYNAMIC_DOWNCAST(TextDataEntryItem, &item)) {
            into.text = text->GetValue().GetString();
        } else if (const auto* number = DYNAMIC_DOWNCAST(FloatDataEntryItem, &item)) {
            into.number = number->GetValue();
        } else {
            into.value = static_cast<const IntegerDataEntryItem&>(item).GetValue();
        }
    }
    void Create() {
        m_form->Create(CRect(CPoint(), m_size), 1, &m_driver.Host());
        m_driver.Resize(*m_form, m_size);
        m_model.client = CSize(std::max<LONG>(m_size.cx - 2, 0), std::max<LONG>(m_size.cy - 2, 0));
        m_model.Grow(Client());
    }

    // Events.

    void ClickSomewhere() {
        const CSize client = Client();
        if (client.cx <= 0 || client.cy <= 0) return;
        CPoint point(Below(client.cx), Below(client.cy));
        // A form has much empty ground.
        const FormItem& item = m_dice.Pick(m_model.items);
        if (!m_dice.OneIn(4) && !item.place.IsRectEmpty()) {
            CPoint inside(item.place.left + Below(item.place.Width()),
                          item.place.top + Below(item.place.Height()));
            if (item.kind->IsChoice() && !m_dice.OneIn(3)) {
                inside = item.place.TopLeft() + CSize(m_dice.Pick(item.kind->cells).place.left + 2,
                                                      m_dice.Pick(item.kind->cells).place.top + 4);
            }
            inside.Offset(-m_model.scroll.x, -m_model.scroll.y);
            if (CRect(CPoint(), client).PtInRect(inside)) point = inside;
        }
        Click(point, false);
        if (!m_dice.OneIn(8)) return;
        m_driver.Pump();
        Compare();
        if (!testing::Test::HasFatalFailure()) Click(point, true);
    }
    void Click(CPoint point, bool isSecond) {
        m_log += (isSecond ? "2@" : "@") + std::to_string(point.x) + "," + std::to_string(point.y);
        // Into the box, the click is its own; the edge of the box is nobody's.
        const CRect box = BoxPlace();
        CRect inner = box;
        inner.DeflateRect(2, 2);
        const bool isInBox = box.PtInRect(point) != 0;
        if (isInBox && inner.PtInRect(point) == 0) return;
        if (isInBox) {
            m_isCaretLost = true;
        } else {
            m_model.Click(point);
        }
        m_form->ClientToScreen(&point);
        m_driver.Click(point, isSecond);
    }
    void Turn() {
        const CSize client = Client();
        if (client.cx <= 0 || client.cy <= 0) return;
        static constexpr int deltas[] = {-360, -120, -120, -40, 40, 120, 240};
        const int delta = m_dice.Pick(deltas);
        CRect window;
        m_form->GetWindowRect(&window);
        // Also over the lower bar, below the client area.
        CPoint point(Below(client.cx), Below(window.Height() - 2));
        m_log +=
            std::to_string(delta) + "@" + std::to_string(point.x) + "," + std::to_string(point.y);
        m_form->ClientToScreen(&point);
        m_model.Turn(delta, point.y >= window.bottom - tessalink::GetSystemMetrics(SM_CYHSCROLL));
        m_driver.Turn(point, delta);
    }
    void Scroll() {
        static constexpr UINT codes[] = {SB_LINEUP,        SB_LINEDOWN,   SB_PAGEUP, SB_PAGEDOWN,
                                         SB_THUMBPOSITION, SB_THUMBTRACK, SB_TOP,    SB_BOTTOM};
        const UINT code = m_dice.Pick(codes);
        const bool vertical =
            m_model.layout.Vertical() && (!m_model.layout.Horizontal() || m_dice.OneIn(2));
        const int position = Below(200);
        m_log += (vertical ? "v" : "h") + std::to_string(code) + ":" + std::to_string(position);
        m_model.Scroll(vertical, code, position);
        m_driver.Scroll(*m_form, vertical ? SB_VERT : SB_HORZ, code, position);
    }
    void Resize() {
        m_size = m_dice.OneIn(6) ? CSize(Below(30), Below(30))
                                 : CSize(Below(cMaxWidth), Below(cMaxHeight));
        m_log += std::to_string(m_size.cx) + "x" + std::to_string(m_size.cy);
        m_driver.Resize(*m_form, m_size);
        m_model.Resize(Client());
    }
    void Focus() {
        if (m_model.hasFocus) return;
        const bool isBack = m_dice.OneIn(3);
        if (isBack) m_log += "+";
        m_model.Focus(isBack);
        m_driver.Enter(*m_form, isBack);
    }
    void CommitEntry() {
        const bool isKept = m_model.CommitEntry();
        ASSERT_EQ(m_driver.Host().CommitEntry(), isKept) << Story();
    }
    void Leave() {
        m_model.Leave();
        m_driver.Leave();
    }
    void SetReadOnly() {
        const bool readOnly = m_dice.OneIn(3);
        if (m_dice.OneIn(5)) {
            m_model.SetAllReadOnly(readOnly);
            m_form->SetReadOnly(readOnly ? 1 : 0);
            return;
        }
        const int index = AnyItem();
        m_log += std::to_string(index) + (readOnly ? "+" : "-");
        m_model.SetReadOnly(index, readOnly);
        m_form->SetReadOnlyItem(index, readOnly ? 1 : 0);
    }
    void SetCurrent() {
        const int index = AnyItem();
        m_log += std::to_string(index);
        m_model.SetCurrent(index);
        m_form->SetCurrItem(index);
    }
    void Grow() {
        constexpr std::size_t cMost = 18;
        if (m_model.items.size() >= cMost) return;
        Add();
        m_model.Grow(Client());
    }
    void Recreate() {
        m_model.Destroy();
        m_form->DestroyWindow();
        Create();
    }
    void Press() {
        static constexpr UINT keys[] = {VK_RETURN, VK_RETURN, VK_UP,   VK_DOWN,  VK_LEFT,
                                        VK_RIGHT,  VK_HOME,   VK_END,  VK_TAB,   VK_TAB,
                                        VK_BACK,   VK_DELETE, VK_NEXT, VK_PRIOR, VK_ESCAPE};
        if (!m_model.hasFocus) return;
        const UINT key = m_dice.Pick(keys);
        const bool isChoice = m_model.Now().kind->IsChoice();
        const bool isSideways = key == VK_LEFT || key == VK_RIGHT;
        const bool isRow = isSideways || key == VK_HOME || key == VK_END;
        Held held;
        held.ctrl = m_dice.OneIn(3) && (key == VK_RETURN || (isChoice && isRow));
        held.shift = key == VK_TAB ? m_dice.OneIn(2) : m_dice.OneIn(4) && !isChoice && isRow;
        m_log += std::to_string(key) + (held.ctrl ? "^" : "") + (held.shift ? "+" : "");
        m_model.Press(key, held.ctrl, held.shift);
        m_driver.PressKey(key, held);
    }
    void Type() {
        if (!m_model.hasFocus) return;
        const bool isTime = m_model.Now().kind->type == FieldKind::Time;
        const char ch =
            m_dice.Pick(std::string_view(isTime ? "0123451200:: apx" : "0123456789012abcAB -.,:_"));
        m_log += std::string("'") + ch;
        m_model.Type(ch);
        m_driver.Type(ch);
    }

    // Comparing.

    CRect BoxPlace() const {
        const CWnd* ui = m_form->GetItemUI(m_form->GetCurrItemIdx());
        const CWnd* box =
            ui->GetSafeHwnd() != nullptr ? ui->GetDlgItem(TextDataEntryUI::cEditId) : nullptr;
        if (box == nullptr || box->IsWindowVisible() == 0) return {};
        CRect place;
        box->GetWindowRect(&place);
        CPoint origin;
        m_form->ClientToScreen(&origin);
        place.OffsetRect(-origin.x, -origin.y);
        return place;
    }
    void CompareBox() {
        const CWnd* ui = m_form->GetItemUI(m_model.current);
        CWnd* box =
            ui->GetSafeHwnd() != nullptr ? ui->GetDlgItem(TextDataEntryUI::cEditId) : nullptr;
        const bool isShown = box != nullptr && box->IsWindowVisible() != 0;
        // What has no room is not visible either.
        ASSERT_EQ(isShown, m_model.ShowsBox()) << Story();
        ASSERT_EQ(m_form->IsChild(CWnd::GetFocus()) != 0, m_model.hasFocus) << Story();
        if (!isShown) return;
        ASSERT_EQ(CWnd::GetFocus(), box) << Story();
        CString text;
        box->GetWindowText(text);
        ASSERT_EQ(text.GetString(), m_model.box.text) << Story();
        int start = 0;
        int end = 0;
        static_cast<CEdit*>(box)->GetSel(start, end);
        FormBox& expected = m_model.box;
        if (std::exchange(expected.isCaretFree, false)) {
            ASSERT_EQ(start, end) << Story();
            ASSERT_EQ(expected.LineOf(start), expected.LineOf(expected.caret)) << Story();
            expected.anchor = expected.caret = start;
        }
        const bool isElsewhere = start != expected.Start() || end != expected.End();
        if (std::exchange(m_isCaretLost, false) && isElsewhere) {
            expected.anchor = start;
            expected.caret = end;
        }
        ASSERT_EQ(std::pair(start, end), std::pair(expected.Start(), expected.End())) << Story();
    }
    /// What does not fit can be reached by a bar.
    void CheckBars() {
        CRect window;
        m_form->GetWindowRect(&window);
        const bool hasRoom = window.Width() > 40 && window.Height() > 40;
        const bool hasRightBar = m_model.client.cx < window.Width() - 2;
        const bool hasLowerBar = m_model.client.cy < window.Height() - 2;
        const CSize extent = m_model.Extent();
        if (!hasRoom) return;
        ASSERT_TRUE(hasRightBar || !m_model.layout.Vertical() || extent.cy <= m_model.client.cy)
            << Story();
        ASSERT_TRUE(hasLowerBar || !m_model.layout.Horizontal() || extent.cx <= m_model.client.cx)
            << Story();
    }

    LRESULT Answer(const NMHDR& header) {
        const auto& told = reinterpret_cast<const DATAENTRYCTL_NOTIFICATION&>(header);
        m_told.push_back({static_cast<int>(header.code), told.itemIndex});
        if (header.code == DATAENTRY_CHANGING) return m_model.refusesChanges ? 1 : 0;
        return header.code == DATAENTRY_CLICKED && m_model.refusesClicks ? 1 : 0;
    }
    CSize Client() const {
        CRect client;
        m_form->GetClientRect(&client);
        return client.Size();
    }
    int Below(int count) { return static_cast<int>(m_dice.Below(static_cast<std::size_t>(count))); }
    int AnyItem() { return Below(static_cast<int>(m_model.items.size())); }
    std::string Story() const { return "\n" + m_log; }

    Dice& m_dice;
    InputDriver& m_driver;
    std::unique_ptr<HostServicesScope> m_services;
    FormModel m_model;
    std::vector<FieldKind> m_kinds;
    std::vector<DataEntryItemUI*> m_interfaces;
    std::unique_ptr<DataEntryCtl> m_form;
    CSize m_size{600, 400};
    std::vector<FormNote> m_told;
    std::size_t m_count = 0;
    bool m_isCaretLost = false;
    std::string m_log;
};

inline const FormTrial::Event FormTrial::cEvents[] = {{40, "type", &FormTrial::Type},
                                                      {36, "key", &FormTrial::Press},
                                                      {16, "click", &FormTrial::ClickSomewhere},
                                                      {6, "focus", &FormTrial::Focus},
                                                      {2, "leave", &FormTrial::Leave},
                                                      {4, "wheel", &FormTrial::Turn},
                                                      {5, "scroll", &FormTrial::Scroll},
                                                      {4, "resize", &FormTrial::Resize},
                                                      {4, "readonly", &FormTrial::SetReadOnly},
                                                      {4, "current", &FormTrial::SetCurrent},
                                                      {3, "commit", &FormTrial::CommitEntry},
                                                      {1, "grow", &FormTrial::Grow},
                                                      {1, "recreate", &FormTrial::Recreate}};

inline const int FormTrial::cAllWeights = [] {
    int all = 0;
    for (const Event& event : cEvents) all += event.weight;
    return all;
}();

/// So many random events, over many random forms.
inline void runForms(InputDriver& driver, std::uint64_t seed, int events) {
    constexpr int cEventsPerForm = 80;
    Dice dice(seed);
    std::size_t notes = 0;
    for (int done = 0; done < events && !testing::Test::HasFatalFailure(); done += cEventsPerForm) {
        FormTrial trial(dice, driver);
        trial.Compare();
        for (int i = 0; i < cEventsPerForm && !testing::Test::HasFatalFailure(); ++i) {
            trial.Step();
            if (!testing::Test::HasFatalFailure()) trial.Compare();
        }
        notes += trial.NoteCount();
    }
    EXPECT_GT(notes, static_cast<std::size_t>(events) / 4);
}

}  // namespace tessalink::test

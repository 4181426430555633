#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/FlowLayoutMgr.h"
#include "dataentry/GridLayoutMgr.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/windows/CEdit.h"
#include "tests/support/Dice.h"
#include "tests/support/FormHost.h"

using tessalink::HeadlessSystem;
using tessalink::test::Dice;
using tessalink::test::FormHost;
using tessalink::test::SizedItemUI;

namespace {

using Note = FormHost::Note;

HeadlessSystem& windows() {
    return HeadlessSystem::Default();
}

// Items of 30 pixels in a client area of 100; the vertical bar shows.
class FormScroll : public testing::Test {
protected:
    explicit FormScroll(int items = 20) : m_form(new SingleColLayoutMgr) {
        auto* ui = new SizedItemUI({CSize(50, 30)});
        for (int i = 0; i < items; ++i) m_form.AddItem(new IntegerDataEntryItem, ui);
        m_form.Create(CRect(0, 0, 200, 102), 1, &m_host);
    }

    int position() const { return m_form.GetVisibleArea().top; }

    FormHost m_host;
    DataEntryCtl m_form;
};

TEST_F(FormScroll, EveryRequest) {
    struct {
        UINT code;
        int thumb;
        int from;
        int to;
    } const cases[] = {{SB_LINEUP, 0, 60, 35},        {SB_LINEUP, 0, 10, 0},
                       {SB_LINEUP, 0, 0, 0},          {SB_LINEDOWN, 0, 60, 85},
                       {SB_LINEDOWN, 0, 490, 500},    {SB_LINEDOWN, 0, 500, 500},
                       {SB_PAGEUP, 0, 150, 50},       {SB_PAGEUP, 0, 60, 0},
                       {SB_PAGEDOWN, 0, 60, 160},     {SB_PAGEDOWN, 0, 450, 500},
                       {SB_THUMBPOSITION, 77, 0, 77}, {SB_THUMBPOSITION, 9999, 0, 500},
                       {SB_THUMBTRACK, 77, 20, 20},   {SB_TOP, 0, 60, 0},
                       {SB_BOTTOM, 0, 60, 500},       {SB_ENDSCROLL, 0, 60, 60}};
    for (const auto& c : cases) {
        m_form.SendMessage(WM_VSCROLL, scrollParam(SB_THUMBPOSITION, c.from));
        ASSERT_EQ(position(), c.from);
        m_form.SendMessage(WM_VSCROLL, scrollParam(c.code, c.thumb));
        EXPECT_EQ(position(), c.to) << "code " << c.code << " from " << c.from;
        EXPECT_EQ(m_form.GetScrollPos(SB_VERT), c.to);
    }
}

TEST_F(FormScroll, TheCurrentItemFollowsAndOnlyWhatCameIntoViewIsPainted) {
    m_form.SetFocus();
    windows().Pump();
    const auto painted = windows().PaintedArea();
    m_form.SendMessage(WM_VSCROLL, SB_PAGEDOWN);
    EXPECT_EQ(m_form.GetCurrItemIdx(), 4) << "the first that shows whole";
    windows().Pump();
    // All of the page here, and the window of the item that has become current.
    EXPECT_LE(windows().PaintedArea() - painted, 2 * 183 * 100 + 183 * 60);
    m_form.SendMessage(WM_VSCROLL, SB_LINEDOWN);
    windows().Pump();
    const auto before = windows().PaintedArea();
    m_form.SendMessage(WM_VSCROLL, SB_LINEDOWN);
    windows().Pump();
    EXPECT_LE(windows().PaintedArea() - before, 183 * (25 + 3 * 30));
    m_form.SetCurrItem(0);
    EXPECT_EQ(position(), 0);
    m_form.SetCurrItem(4);
    EXPECT_EQ(position(), 50) << "no farther than needed";
}

TEST_F(FormScroll, ASmallerOrLargerWindowKeepsThePositionInRange) {
    m_form.SetCurrItem(19);
    EXPECT_EQ(position(), 500);
    m_form.MoveWindow(CRect(0, 0, 200, 402));
    EXPECT_EQ(position(), 200);
    m_form.MoveWindow(CRect(0, 0, 200, 802));
    EXPECT_EQ(position(), 0);
    m_form.MoveWindow(CRect(0, 0, 0, 0));
    m_form.MoveWindow(CRect(0, 0, 200, 102));
    EXPECT_EQ(m_form.ItemIsFullyVisible(19), 1);
}

TEST_F(FormScroll, TheWheelScrollsByTheSystemsLines) {
    struct {
        int lines;
        short delta;
        int to;
    } const cases[] = {{3, -120, 75}, {3, -39, 0}, {3, -40, 25}, {1, -240, 50}, {0, -120, 75}};
    for (const auto& c : cases) {
        windows().SetWheelLines(c.lines);
        m_form.SendMessage(WM_VSCROLL, SB_TOP);
        windows().Turn({20, 50}, c.delta);
        windows().Pump();
        EXPECT_EQ(position(), c.to) << c.lines << " lines, " << c.delta;
    }
    windows().SetWheelLines(3);
}

TEST_F(FormScroll, PageKeysScrollOrLeave) {
    m_form.SetFocus();
    m_host.Taken();
    windows().PressKey(VK_NEXT);
    windows().Pump();
    EXPECT_EQ(position(), 100);
    m_form.SetCurrItem(19);
    m_host.Taken();
    windows().PressKey(VK_NEXT);
    EXPECT_EQ(m_host.Taken(), (std::vector<Note>{{6, 19}}));
    m_form.SetCurrItem(0);
    m_host.Taken();
    windows().PressKey(VK_PRIOR);
    EXPECT_EQ(m_host.Taken(), (std::vector<Note>{{5, 0}}));
}

TEST(FormLife, AFormMayGoInsideAnyOfItsNotifications) {
    for (const int code : {DATAENTRY_CHANGING, DATAENTRY_CHANGED, DATAENTRY_CLICKED,
                           DATAENTRY_MOVED, NM_SETFOCUS, NM_KILLFOCUS, DATAENTRY_PAST_LAST}) {
        for (const bool choices : {false, true}) {
            for (const bool deletes : {false, true}) {
                FormHost host;
                auto form = std::make_unique<DataEntryCtl>(new SingleColLayoutMgr);
                DataEntryItemUI* ui =
                    choices ? static_cast<DataEntryItemUI*>(new RadioBtnItemUI("[a|a|1][b|b|2]", 0))
                            : new IntegerDataEntryUI(0, 3);
                for (int i = 0; i < 3; ++i) form->AddItem(new IntegerDataEntryItem, ui);
                form->Create(CRect(0, 0, 300, 200), 1, &host);
                host.answer = [&](const DATAENTRYCTL_NOTIFICATION& told) -> LRESULT {
                    if (told.hdr.code != code) return 0;
                    if (deletes) {
                        form.reset();
                    } else {
                        form->DestroyWindow();
                    }
                    return 0;
                };
                form->SetFocus();
                for (const char* text : {"1", "a", "2", "b"}) {
                    windows().Type(text);
                    windows().PressKey(VK_RETURN);
                    windows().Click({20, 10});
                    windows().Pump();
                }
                windows().PressKey(VK_TAB);
                windows().Pump();
            }
        }
    }
}

TEST(FormLife, ThousandFormsComeAndGo) {
    FormHost host;
    for (int round = 0; round < 1000; ++round) {
        DataEntryCtl form(new FlowLayoutMgr(round % 2));
        auto* ui = new IntegerDataEntryUI(0, 3);
        for (int i = 0; i < 4; ++i) form.AddItem(new IntegerDataEntryItem, ui);
        form.Create(CRect(0, 0, 300, 200), 1, &host);
        form.SetFocus();
        windows().Type("5");
        if (round % 3 == 0) form.DestroyWindow();
    }
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
}

TEST(FormLife, AFormWithoutLayoutIsRefusedAndOneOfManyItemsKnowsThem) {
    FormHost host;
    DataEntryCtl none(nullptr);
    EXPECT_EQ(none.Create(CRect(0, 0, 100, 100), 1, &host), 0);
    DataEntryCtl form(new SingleColLayoutMgr);
    auto* ui = new SizedItemUI({CSize(50, 30)});
    for (int i = 0; i < 70'000; ++i) form.AddItem(new IntegerDataEntryItem, ui);
    EXPECT_EQ(form.GetItem(66'000)->GetIndex(), 66'000 - 65'536);
    EXPECT_EQ(form.IndexOf(form.GetItem(66'000)), 66'000);
    form.Create(CRect(0, 0, 300, 200), 1, &host);
    form.SetCurrItem(69'999);
    EXPECT_EQ(form.ItemIsFullyVisible(69'999), 1);
    EXPECT_THROW(form.SetCurrItem(70'000), CInvalidArgException);
    EXPECT_THROW(form.GetItemLoc(-1), CInvalidArgException);
}

// Requests, sizes and calls at random; what a form shows is what plain rules tell.
class RandomScroll {
public:
    explicit RandomScroll(Dice& dice) : m_dice(dice), m_form(make_manager()) {
        std::vector<CSize> sizes;
        for (int i = 0; i < 7; ++i) sizes.emplace_back(20 + below(90), 5 + below(60));
        auto* ui = new SizedItemUI(sizes);
        for (int i = 1 + below(30); i > 0; --i) m_form.AddItem(new IntegerDataEntryItem, ui);
        m_form.Create(CRect(0, 0, 150, 120), 1, &m_host);
        m_form.SetFocus();
    }
    void Step() {
        static constexpr UINT cCodes[] = {SB_LINEUP,        SB_LINEDOWN, SB_PAGEUP, SB_PAGEDOWN,
                                          SB_THUMBPOSITION, SB_TOP,      SB_BOTTOM, SB_THUMBTRACK};
        const int action = below(8);
        if (action == 0) {
            m_form.MoveWindow(CRect(0, 0, below(260), below(260)));
        } else if (action == 1) {
            const int index = below(m_form.GetItemCount());
            m_form.SetCurrItem(index);
            EXPECT_EQ(m_form.GetCurrItemIdx(), index);
            check_in_view(index);
        } else {
            const bool isVertical = below(2) != 0;
            request(isVertical, m_dice.Pick(cCodes), below(300));
        }
        windows().Pump();
        check_range();
    }

private:
    int below(int count) { return static_cast<int>(m_dice.Below(static_cast<std::size_t>(count))); }
    DataEntryLayoutMgr* make_manager() {
        switch (below(4)) {
            case 0:
                return new FlowLayoutMgr(0);
            case 1:
                return new FlowLayoutMgr(1);
            case 2:
                return new GridLayoutMgr(0, 3, below(2));
            default:
                return new SingleColLayoutMgr;
        }
    }
    CSize extent() const {
        CSize all;
        for (int i = 0; i < m_form.GetItemCount(); ++i) {
            all.cx = std::max(all.cx, m_form.GetItemLoc(i).right);
            all.cy = std::max(all.cy, m_form.GetItemLoc(i).bottom);
        }
        return all;
    }
    void check_range() const {
        const CRect area = m_form.GetVisibleArea();
        EXPECT_GE(area.left, 0);
        EXPECT_GE(area.top, 0);
        EXPECT_TRUE(area.left == 0 || area.right <= extent().cx);
        EXPECT_TRUE(area.top == 0 || area.bottom <= extent().cy);
        CRect client;
        m_form.GetClientRect(&client);
        EXPECT_EQ(area.Size(), client.Size());
    }
    void check_in_view(int index) const {
        const CRect area = m_form.GetVisibleArea();
        const CRect place = m_form.GetItemLoc(index);
        const bool isWider = place.Width() > area.Width();
        const bool isHigher = place.Height() > area.Height();
        EXPECT_TRUE(isWider ? place.left == area.left || area.right >= extent().cx
                            : place.left >= area.left && place.right <= area.right);
        EXPECT_TRUE(isHigher ? place.top == area.top || area.bottom >= extent().cy
                             : place.top >= area.top && place.bottom <= area.bottom);
    }
    void request(bool isVertical, UINT code, int thumb) {
        const CRect before = m_form.GetVisibleArea();
        const int from = isVertical ? before.top : before.left;
        const int size = isVertical ? before.Height() : before.Width();
        const int end = std::max((isVertical ? extent().cy : extent().cx) - size, 0);
        const int target = code == SB_LINEUP          ? from - size / 4
                           : code == SB_LINEDOWN      ? from + size / 4
                           : code == SB_PAGEUP        ? from - size
                           : code == SB_PAGEDOWN      ? from + size
                           : code == SB_THUMBPOSITION ? thumb
                           : code == SB_TOP           ? 0
                           : code == SB_BOTTOM        ? end
                                                      : from;
        m_form.SendMessage(isVertical ? WM_VSCROLL : WM_HSCROLL,
                           code == SB_THUMBPOSITION ? scrollParam(code, thumb) : code);
        const CRect after = m_form.GetVisibleArea();
        EXPECT_EQ(isVertical ? after.top : after.left, std::clamp(target, 0, end)) << code;
    }

    Dice& m_dice;
    FormHost m_host;
    DataEntryCtl m_form;
};

TEST(FormScrollRandom, PositionsFollowTheRules) {
    Dice dice(77);
    for (int round = 0; round < 300 && !testing::Test::HasFailure(); ++round) {
        RandomScroll form(dice);
        for (int i = 0; i < 30; ++i) form.Step();
    }
}

// Wide enough for two a row the items need a bar, which leaves room for other rows that need none.
TEST(FormLife, ABarThatIsNeededOnlyWithoutItStays) {
    FormHost host;
    DataEntryCtl form(new FlowLayoutMgr(0));
    auto* ui = new SizedItemUI({{60, 10}, {50, 100}, {40, 100}, {60, 10}});
    for (int i = 0; i < 4; ++i) form.AddItem(new IntegerDataEntryItem, ui);
    form.Create(CRect(0, 0, 112, 152), 1, &host);
    CRect client;
    form.GetClientRect(&client);
    EXPECT_EQ(client.Width(), 93);
    EXPECT_EQ(form.GetItemLoc(3).bottom, 120);
}

// A form with one number being typed.
struct Typing {
    Typing() : form(new DataEntryCtl(new SingleColLayoutMgr)) {
        auto* ui = new IntegerDataEntryUI(0, 3);
        for (int i = 0; i < 3; ++i) form->AddItem(new IntegerDataEntryItem, ui);
        form->Create(CRect(0, 0, 300, 200), 1, &host);
        form->SetFocus();
        windows().Type("5");
        host.Taken();
    }

    FormHost host;
    std::unique_ptr<DataEntryCtl> form;
};

TEST(FormLife, FocusThatGoesInANotificationIsToldOnce) {
    for (const int code : {DATAENTRY_CHANGING, DATAENTRY_CHANGED, DATAENTRY_MOVED}) {
        Typing typing;
        CEdit other;
        other.Create(WS_CHILD | WS_VISIBLE, CRect(400, 0, 500, 20), &typing.host, 2);
        typing.host.answer = [&](const DATAENTRYCTL_NOTIFICATION& told) -> LRESULT {
            if (told.hdr.code == code) other.SetFocus();
            return 0;
        };
        typing.form->SetReadOnlyItem(2, 1);
        windows().PressKey(VK_RETURN);
        windows().PressKey(VK_RETURN);
        const std::vector<Note> notes = typing.host.Taken();
        const auto gone = std::count(notes.begin(), notes.end(), Note{NM_KILLFOCUS, -1});
        const bool isThere = typing.form->IsChild(CWnd::GetFocus()) != 0;
        const auto back = std::count(notes.begin(), notes.end(), Note{NM_SETFOCUS, 1});
        EXPECT_EQ(gone, back + (isThere ? 0 : 1)) << code;
        EXPECT_EQ(gone, 1) << code;
        EXPECT_TRUE(code != DATAENTRY_MOVED || CWnd::GetFocus() == &other);
    }
}

TEST(FormLife, AParentMayGoToAnotherItemWhileItIsTold) {
    for (const bool isChoice : {false, true}) {
        for (const int code : {DATAENTRY_CHANGING, DATAENTRY_CHANGED}) {
            FormHost host;
            DataEntryCtl form(new SingleColLayoutMgr);
            DataEntryItemUI* ui =
                isChoice ? static_cast<DataEntryItemUI*>(new CheckBoxItemUI("[a|5|5]", 0))
                         : new IntegerDataEntryUI(0, 3);
            for (int i = 0; i < 4; ++i) form.AddItem(new IntegerDataEntryItem, ui);
            form.Create(CRect(0, 0, 300, 300), 1, &host);
            form.SetFocus();
            host.answer = [&](const DATAENTRYCTL_NOTIFICATION& told) -> LRESULT {
                if (told.hdr.code == code) form.SetCurrItem(3);
                return 0;
            };
            windows().Type("5");
            windows().PressKey(isChoice ? VK_ESCAPE : VK_DOWN);
            EXPECT_EQ(form.GetCurrItemIdx(), 3) << code;
            EXPECT_EQ(static_cast<IntegerDataEntryItem*>(form.GetItem(0))->GetValue(), 5);
            const std::vector<Note> notes = host.Taken();
            EXPECT_EQ(std::count(notes.begin(), notes.end(), Note{DATAENTRY_CHANGED, 0}), 1);
            EXPECT_EQ(std::count(notes.begin(), notes.end(), Note{DATAENTRY_CHANGED, 3}), 0);
            windows().Type("5");
            form.SetCurrItem(0);
            EXPECT_EQ(static_cast<IntegerDataEntryItem*>(form.GetItem(3))->GetValue(), 5)
                << "what is keyed goes there";
        }
    }
}

TEST(FormLife, TabInAFormThatIsAloneStaysInIt) {
    for (const bool moves : {false, true}) {
        Typing typing;
        typing.form->TabMoves(moves);
        for (const char* text : {"6", "7", "8"}) {
            windows().PressKey(VK_TAB);
            windows().Type(text);
        }
        const int items[] = {5, 6, 7};
        for (int i = 0; i < 3; ++i) {
            const auto& item = static_cast<IntegerDataEntryItem&>(*typing.form->GetItem(i));
            EXPECT_EQ(item.GetValue(), moves ? items[i] : i == 0 ? 7 : 0) << i;
        }
        CString box;
        CWnd::GetFocus()->GetWindowText(box);
        EXPECT_STREQ(box, "8");
        EXPECT_EQ(typing.form->GetCurrItemIdx(), 0) << "after the last item follows the first";
    }
}

TEST(FormLife, WhatIsTypedStaysAsLongAsTheValue) {
    Typing typing;
    const auto box = [] {
        CString text;
        CWnd::GetFocus()->GetWindowText(text);
        return text;
    };
    typing.form->OnDataChanged();
    typing.form->OnDataChanged(0);
    EXPECT_STREQ(box(), "5");
    static_cast<IntegerDataEntryItem*>(typing.form->GetItem(0))->SetValue(8);
    typing.form->OnDataChanged();
    EXPECT_STREQ(box(), "8");
}

TEST(FormLife, FocusWithoutItemsAndWithoutInput) {
    FormHost host;
    DataEntryCtl form(new SingleColLayoutMgr);
    form.Create(CRect(0, 0, 300, 200), 1, &host);
    form.SetFocus();
    EXPECT_EQ(host.Taken(), (std::vector<Note>{{NM_SETFOCUS, -1}}));
    auto* ui = new IntegerDataEntryUI(0, 3);
    form.AddItem(new IntegerDataEntryItem, ui);
    form.AddItem(new IntegerDataEntryItem, ui);
    windows().Type("5");
    EXPECT_EQ(host.Taken(), (std::vector<Note>{{DATAENTRY_MOVED, 0}}));
    form.EnableWindow(0);
    host.Taken();
    form.SetCurrItem(1);
    EXPECT_TRUE(host.Taken().empty());
    EXPECT_EQ(CWnd::GetFocus(), nullptr) << "a disabled form takes none";
    form.EnableWindow();
    form.SetFocus();
    EXPECT_EQ(host.Taken(), (std::vector<Note>{{NM_SETFOCUS, 1}}));
}

TEST(FormLife, AnotherLayoutBringsItsScrollBar) {
    FormHost host;
    DataEntryCtl form(new FlowLayoutMgr(0));
    auto* ui = new SizedItemUI({CSize(50, 30)});
    for (int i = 0; i < 20; ++i) form.AddItem(new IntegerDataEntryItem, ui);
    form.Create(CRect(0, 0, 102, 102), 1, &host);
    EXPECT_EQ(form.GetVisibleArea(), CRect(0, 0, 83, 100));
    form.SetLayoutMgr(new FlowLayoutMgr(1));
    EXPECT_EQ(form.GetVisibleArea(), CRect(0, 0, 100, 83));
}

TEST(FormLife, SettingReadOnlySurvivesWhatTheParentDoes) {
    for (const bool all : {false, true}) {
        Typing typing;
        typing.host.answer = [&](const DATAENTRYCTL_NOTIFICATION& told) -> LRESULT {
            if (told.hdr.code == DATAENTRY_CHANGED) typing.form.reset();
            return 0;
        };
        DataEntryCtl& form = *typing.form;
        if (all) {
            form.SetReadOnly(1);
        } else {
            form.SetReadOnlyItem(0, 1);
        }
        EXPECT_EQ(typing.form, nullptr);
    }
}

TEST(FormLife, WhatIsRefusedWhileAFormGoesIsAskedOnce) {
    Typing typing;
    typing.host.answer = [&](const DATAENTRYCTL_NOTIFICATION& told) -> LRESULT {
        return told.hdr.code == DATAENTRY_CHANGING;
    };
    typing.form->DestroyWindow();
    const std::vector<Note> notes = typing.host.Taken();
    EXPECT_EQ(std::count(notes.begin(), notes.end(), Note{DATAENTRY_CHANGING, 0}), 1);
    EXPECT_EQ(typing.form->GetItem(0)->IsNull(), 1);
}

}  // namespace

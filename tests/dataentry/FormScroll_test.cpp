#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/FlowLayoutMgr.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/windows/CEdit.h"
#include "tests/support/FormHost.h"
#include "tests/support/HeadlessWindows.h"

using tessalink::test::FormHost;
using tessalink::test::SizedItemUI;
using tessalink::test::windows;

namespace {

using Note = FormHost::Note;

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

TEST_F(FormScroll, OnlyWhatCameIntoViewIsPainted) {
    m_form.SetFocus();
    windows().Pump();
    const auto painted = windows().PaintedArea();
    m_form.SendMessage(WM_VSCROLL, SB_PAGEDOWN);
    windows().Pump();
    // All of the page here, and the window of the item that has become current.
    EXPECT_LE(windows().PaintedArea() - painted, 2 * 183 * 100 + 183 * 60);
    m_form.SendMessage(WM_VSCROLL, SB_LINEDOWN);
    windows().Pump();
    const auto before = windows().PaintedArea();
    m_form.SendMessage(WM_VSCROLL, SB_LINEDOWN);
    windows().Pump();
    EXPECT_LE(windows().PaintedArea() - before, 183 * (25 + 3 * 30));
}

TEST_F(FormScroll, InItsFullSizeNothingScrolls) {
    m_form.MoveWindow(CRect(0, 0, 20, 20));
    EXPECT_TRUE(m_form.GetFullSize() == CSize(2 + 50 + 17, 2 + 600 + 17));
    m_form.MoveWindow(CRect(CPoint(), m_form.GetFullSize()));
    EXPECT_EQ(m_form.GetVisibleArea(), CRect(0, 0, 50 + 17, 600 + 17)) << "no bars";
    m_form.MoveWindow(CRect(0, 0, 20, 20));
    m_form.MoveWindow(CRect(0, 0, 68, 618));
    EXPECT_EQ(m_form.GetVisibleArea().Height(), 599) << "a bar that still shows";
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

TEST(FormLife, AFormMayGoInsideAnyOfItsNotifications) {
    for (const int code :
         {DATAENTRY_CHANGING, DATAENTRY_CHANGED, DATAENTRY_CLICKED, DATAENTRY_MOVED,
          static_cast<int>(NM_SETFOCUS), static_cast<int>(NM_KILLFOCUS), DATAENTRY_PAST_LAST}) {
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
                    if (static_cast<int>(told.hdr.code) != code) return 0;
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
            if (static_cast<int>(told.hdr.code) == code) other.SetFocus();
            return 0;
        };
        typing.form->SetReadOnlyItem(2, 1);
        windows().PressKey(VK_RETURN);
        windows().PressKey(VK_RETURN);
        const std::vector<Note> notes = typing.host.Taken();
        const auto gone =
            std::count(notes.begin(), notes.end(), Note{static_cast<int>(NM_KILLFOCUS), -1});
        const bool isThere = typing.form->IsChild(CWnd::GetFocus()) != 0;
        const auto back =
            std::count(notes.begin(), notes.end(), Note{static_cast<int>(NM_SETFOCUS), 1});
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
                if (static_cast<int>(told.hdr.code) == code) form.SetCurrItem(3);
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
    EXPECT_EQ(host.Taken(), (std::vector<Note>{{static_cast<int>(NM_SETFOCUS), -1}}));
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
    EXPECT_EQ(host.Taken(), (std::vector<Note>{{static_cast<int>(NM_SETFOCUS), 1}}));
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

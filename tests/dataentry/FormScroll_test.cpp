#include <gtest/gtest.h>

#include <memory>

#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/FlowLayoutMgr.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "platform/base/CInvalidArgException.h"
#include "tests/support/FormHost.h"

using tessalink::HeadlessSystem;
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

}  // namespace

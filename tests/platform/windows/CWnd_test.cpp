#include "platform/windows/CWnd.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "platform/windows/CEdit.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/WindowSystem.h"
#include "platform/windows/WindowText.h"
#include "tests/support/Dice.h"
#include "tests/support/HeadlessWindows.h"
#include "tests/support/HostServicesScope.h"

using tessalink::test::Dice;
using tessalink::test::windows;

namespace {

// Notes its messages under a name.
class Noted : public CWnd {
public:
    Noted(std::string name, std::vector<std::string>& notes)
        : m_name(std::move(name)), m_notes(notes) {}
    ~Noted() override { DestroyWindow(); }

    void Make(CWnd* parent, const CRect& rect, UINT id, DWORD style = WS_VISIBLE | WS_TABSTOP) {
        Create(nullptr, m_name.c_str(), WS_CHILD | style, rect, parent, id);
    }
    int OnCreate(CREATESTRUCTA*) override { return note("create"), refuses ? -1 : 0; }
    void OnDestroy() override { note("destroy"); }
    void OnSize(UINT, int width, int height) override {
        note("size " + std::to_string(width) + "x" + std::to_string(height));
    }
    void OnSetFocus(CWnd*) override { note("focus"); }
    void OnKillFocus(CWnd* next) override {
        note("unfocus");
        if (steals) SetFocus();
        static_cast<void>(next);
    }
    void OnTimer(UINT_PTR id) override {
        note("timer " + std::to_string(id));
        if (onTimer) onTimer();
    }
    void OnPaint() override {
        CPaintDC dc(this);
        CRect box;
        dc.GetClipBox(&box);
        note("paint " + std::to_string(box.left) + "," + std::to_string(box.top) + "," +
             std::to_string(box.right) + "," + std::to_string(box.bottom));
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message >= WM_USER) {
            note("message " + std::to_string(wParam));
            if (onUser) onUser();
            return static_cast<LRESULT>(wParam);
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }

    bool refuses = false;
    bool steals = false;
    std::function<void()> onTimer;
    std::function<void()> onUser;

private:
    void note(const std::string& what) { m_notes.push_back(m_name + ": " + what); }

    std::string m_name;
    std::vector<std::string>& m_notes;
};

class CWndTest : public testing::Test {
protected:
    CWndTest() { m_frame.Create("Frame", CRect(0, 0, 500, 400)); }

    std::vector<std::string> taken() { return std::exchange(m_notes, {}); }

    std::vector<std::string> m_notes;
    CFrameWnd m_frame;
};

TEST_F(CWndTest, ChildrenGoFirstAndObjectsStay) {
    Noted a("a", m_notes);
    Noted b("b", m_notes);
    Noted c("c", m_notes);
    a.Make(&m_frame, {0, 0, 100, 100}, 1);
    b.Make(&a, {0, 0, 50, 50}, 2);
    c.Make(&a, {50, 0, 90, 50}, 3);
    EXPECT_EQ(a.GetDlgItem(3), &c);
    EXPECT_EQ(m_frame.IsChild(&c), 1);
    taken();
    a.DestroyWindow();
    EXPECT_EQ(taken(), (std::vector<std::string>{"a: destroy", "c: destroy", "b: destroy"}));
    EXPECT_EQ(c.GetSafeHwnd(), nullptr);
    EXPECT_EQ(m_frame.GetChildCount(), 0);
    a.refuses = true;
    a.Make(&m_frame, {0, 0, 100, 100}, 1);
    EXPECT_EQ(a.GetSafeHwnd(), nullptr);
}

TEST_F(CWndTest, AWindowMayGoInItsOwnHandlers) {
    for (const bool deletes : {false, true}) {
        auto window = std::make_unique<Noted>("w", m_notes);
        window->Make(&m_frame, {0, 0, 100, 100}, 1);
        const auto drop = [&] {
            if (deletes) {
                window.reset();
            } else {
                window->DestroyWindow();
            }
        };
        window->onUser = drop;
        window->SetTimer(7, 100);
        window->PostMessage(WM_USER, 1);
        window->PostMessage(WM_USER, 2);
        window->SetFocus();
        taken();
        windows().Pump();
        windows().Advance(1000);
        const auto notes = taken();
        EXPECT_EQ(notes.front(), "w: message 1");
        EXPECT_EQ(std::count(notes.begin(), notes.end(), "w: message 2"), 0);
        EXPECT_EQ(CWnd::GetFocus(), nullptr);
    }
}

TEST_F(CWndTest, TabGoesThroughTheStopsInOrder) {
    Noted group("group", m_notes);
    std::vector<std::unique_ptr<Noted>> stops;
    group.Make(&m_frame, {0, 0, 200, 200}, 1, WS_VISIBLE);
    const auto add = [&](const char* name, CWnd* parent, DWORD style) {
        stops.push_back(std::make_unique<Noted>(name, m_notes));
        stops.back()->Make(parent, {0, 0, 10, 10}, 2, style);
    };
    add("a", &group, WS_VISIBLE | WS_TABSTOP);
    add("hidden", &group, WS_TABSTOP);
    add("none", &group, WS_VISIBLE);
    add("b", &m_frame, WS_VISIBLE | WS_TABSTOP);
    add("disabled", &m_frame, WS_VISIBLE | WS_TABSTOP | WS_DISABLED);
    add("c", &m_frame, WS_VISIBLE | WS_TABSTOP);
    stops[0]->SetFocus();
    taken();
    for (int i = 0; i < 3; ++i) windows().PressKey(VK_TAB);
    windows().HoldKey(VK_SHIFT, true);
    windows().PressKey(VK_TAB);
    windows().HoldKey(VK_SHIFT, false);
    EXPECT_EQ(taken(),
              (std::vector<std::string>{"a: unfocus", "b: focus", "b: unfocus", "c: focus",
                                        "c: unfocus", "a: focus", "a: unfocus", "c: focus"}));
    // One that takes the focus back keeps it.
    stops[5]->steals = true;
    stops[0]->SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), stops[5].get());
    stops[5]->steals = false;
    group.ShowWindow(SW_HIDE);
    EXPECT_EQ(m_frame.GetNextDlgTabItem(stops[5].get()), stops[3].get());
}

TEST_F(CWndTest, APlaceAmongSiblingsIsOneForTabAndOnTheScreen) {
    Noted a("a", m_notes);
    Noted b("b", m_notes);
    Noted c("c", m_notes);
    const std::pair<Noted*, char> names[] = {{&a, 'a'}, {&b, 'b'}, {&c, 'c'}};
    for (const auto& [window, name] : names) window->Make(&m_frame, {0, 0, 50, 50}, 1);
    const auto nameOf = [&](const CWnd* of) {
        return std::find_if(std::begin(names), std::end(names),
                            [of](const auto& named) { return named.first == of; })
            ->second;
    };
    constexpr UINT cStays = SWP_NOMOVE | SWP_NOSIZE;
    struct {
        Noted* window;
        const CWnd* after;
        UINT flags;
        BOOL done;
        const char* order;
        char front;
        CRect place;
    } const cases[] = {
        {&a, &b, cStays, 1, "bac", 'c', {0, 0, 50, 50}},
        {&c, &CWnd::wndBottom, cStays, 1, "bac", 'b', {0, 0, 50, 50}},
        {&a, &CWnd::wndTop, SWP_NOMOVE, 1, "abc", 'a', {0, 0, 20, 10}},
        {&a, &c, SWP_NOZORDER | SWP_NOSIZE, 1, "abc", 'b', {60, 70, 80, 80}},
        {&b, &m_frame, 0, 0, "abc", 'b', {0, 0, 50, 50}},
        {&b, nullptr, cStays | SWP_HIDEWINDOW, 1, "bac", 'c', {0, 0, 50, 50}},
        {&b, nullptr, cStays | SWP_SHOWWINDOW, 1, "bac", 'b', {0, 0, 50, 50}},
    };
    for (const auto& test : cases) {
        EXPECT_EQ(test.window->SetWindowPos(test.after, 60, 70, 20, 10, test.flags), test.done);
        std::string order;
        for (int i = 0; i < 3; ++i) order += nameOf(m_frame.GetChild(i));
        EXPECT_EQ(order, test.order);
        EXPECT_EQ(nameOf(windows().WindowAt(CPoint(5, 5))), test.front) << test.order;
        EXPECT_EQ(tessalink::windowPlace(*test.window), test.place);
    }
    EXPECT_EQ(a.IsChild(&a), 0);
    m_frame.EnableWindow(0);
    a.SetFocus();
    EXPECT_EQ(CWnd::GetFocus(), nullptr) << "in a disabled window nothing is keyed";
}

TEST_F(CWndTest, TheDefaultOfAMessageIsThatOfItsKindOfWindow) {
    struct Twice : CEdit {
        void OnChar(UINT, UINT, UINT) override {
            Default();
            Default();
        }
        using CEdit::Default;
    } edit;
    edit.Create(WS_CHILD | WS_VISIBLE, CRect(0, 0, 50, 20), &m_frame, 1);
    edit.SetFocus();
    windows().Type("ab");
    EXPECT_EQ(edit.Default(), 0) << "no message is being handled";
    CString text;
    edit.GetWindowText(text);
    EXPECT_STREQ(text, "aabb");
    struct Turned : Noted {
        using Noted::Noted;
        BOOL OnMouseWheel(UINT, short, CPoint) override { return static_cast<BOOL>(Default()); }
        LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
            turns += message == WM_MOUSEWHEEL ? 1 : 0;
            return Noted::WindowProc(message, wParam, lParam);
        }
        int turns = 0;
    } outer("outer", m_notes), inner("inner", m_notes);
    outer.Make(&m_frame, {50, 50, 90, 90}, 2);
    inner.Make(&outer, {0, 0, 40, 40}, 3);
    windows().Turn(CPoint(60, 60), 120);
    EXPECT_EQ(outer.turns, 1) << "the parent gets what the window did not use";
}

TEST_F(CWndTest, PaintingCoversWhatIsInvalidAndWhatScrolledIn) {
    Noted window("w", m_notes);
    window.Make(&m_frame, {10, 10, 110, 90}, 1);
    windows().Pump();
    taken();
    struct {
        std::function<void()> change;
        const char* painted;
    } const cases[] = {
        {[&] { window.InvalidateRect(CRect(5, 5, 20, 20)); }, "w: paint 5,5,20,20"},
        {[&] { window.InvalidateRect(CRect(-5, 70, 500, 500)); }, "w: paint 0,70,100,80"},
        {[&] { window.ScrollWindow(0, -30); }, "w: paint 0,50,100,80"},
        {[&] { window.ScrollWindow(15, 0); }, "w: paint 0,0,15,80"},
        {[&] { window.ScrollWindow(0, 300); }, "w: paint 0,0,100,80"}};
    for (const auto& c : cases) {
        c.change();
        windows().Pump();
        EXPECT_EQ(taken(), std::vector<std::string>{c.painted});
    }
    // What is invalid moves with the picture.
    window.InvalidateRect(CRect(0, 40, 10, 50));
    window.ScrollWindow(0, -20);
    CRect update;
    window.GetUpdateRect(&update);
    EXPECT_EQ(update, CRect(0, 20, 100, 80));
    window.ValidateRect(nullptr);
    EXPECT_EQ(window.GetUpdateRect(nullptr), 0);
    window.ShowWindow(SW_HIDE);
    window.Invalidate();
    taken();
    windows().Pump();
    EXPECT_TRUE(taken().empty());
}

TEST_F(CWndTest, ScrollBarsKeepThePositionInRangeAndTakeRoom) {
    Noted window("w", m_notes);
    window.Make(&m_frame, {0, 0, 100, 80}, 1, WS_VISIBLE | WS_BORDER | WS_VSCROLL);
    CRect client;
    window.GetClientRect(&client);
    EXPECT_EQ(client, CRect(0, 0, 98, 78));
    struct {
        int max;
        unsigned page;
        int position;
        int kept;
        int width;
    } const cases[] = {{200, 50, 60, 60, 81},
                       {200, 50, 999, 151, 81},
                       {200, 50, -3, 0, 81},
                       {50, 50, 10, 1, 98},
                       {0, 0, 5, 0, 98}};
    for (const auto& c : cases) {
        SCROLLINFO info{};
        info.fMask = SIF_ALL;
        info.nMax = c.max;
        info.nPage = c.page;
        info.nPos = c.position;
        EXPECT_EQ(window.SetScrollInfo(SB_VERT, &info), c.kept);
        EXPECT_EQ(window.GetScrollPos(SB_VERT), c.kept);
        window.GetClientRect(&client);
        EXPECT_EQ(client.Width(), c.width);
    }
    EXPECT_EQ(taken(), (std::vector<std::string>{"w: create", "w: size 98x78", "w: size 81x78",
                                                 "w: size 98x78"}));
}

TEST_F(CWndTest, TimersRepeatUntilTheyAreKilled) {
    Noted window("w", m_notes);
    window.Make(&m_frame, {0, 0, 100, 80}, 1);
    taken();
    window.SetTimer(1, 100);
    window.SetTimer(2, 250);
    windows().Advance(500);
    EXPECT_EQ(taken(),
              (std::vector<std::string>{"w: timer 1", "w: timer 1", "w: timer 2", "w: timer 1",
                                        "w: timer 1", "w: timer 1", "w: timer 2"}));
    window.onTimer = [&] { window.KillTimer(1); };
    window.KillTimer(2);
    windows().Advance(500);
    EXPECT_EQ(taken().size(), 1U);
    EXPECT_EQ(window.KillTimer(1), 0);
}

TEST_F(CWndTest, APlaceholderGivesItsPlaceAndOrder) {
    Noted first("first", m_notes);
    Noted placeholder("placeholder", m_notes);
    Noted last("last", m_notes);
    first.Make(&m_frame, {0, 0, 10, 10}, 1);
    placeholder.Make(&m_frame, {20, 30, 120, 90}, 2);
    last.Make(&m_frame, {0, 0, 10, 10}, 3);
    Noted own("own", m_notes);
    ASSERT_EQ(own.SubclassDlgItem(2, &m_frame), 1);
    EXPECT_EQ(placeholder.GetSafeHwnd(), nullptr);
    EXPECT_EQ(m_frame.GetChild(1), &own);
    EXPECT_EQ(tessalink::windowPlace(own), CRect(20, 30, 120, 90));
    EXPECT_EQ(m_frame.GetNextDlgTabItem(&first), &own);
    EXPECT_EQ(own.SubclassDlgItem(9, &m_frame), 0);
}

TEST_F(CWndTest, TextsAreReplacedInWindows) {
    tessalink::HostServices services;
    services.stringTable = [](UINT id, CString& text) { return id == 5 && (text = "five", true); };
    const tessalink::test::HostServicesScope scope(services);
    m_frame.SetWindowText("%1 of %1");
    ReplaceWindowText(&m_frame, CString("a%1"));
    CString text;
    m_frame.GetWindowText(text);
    EXPECT_STREQ(text, "a%1 of a%1");
    ReplaceWindowText(&m_frame, 5U);
    m_frame.GetWindowText(text);
    EXPECT_STREQ(text, "afive of afive");
    ReplaceWindowText(nullptr, 5U);
}

TEST_F(CWndTest, EditBoxesEditLikeAPlainString) {
    Dice dice(3);
    for (int round = 0; round < 60; ++round) {
        CEdit edit;
        edit.Create(WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL, CRect(0, 0, 100, 20), &m_frame, 1);
        edit.SetLimitText(12);
        edit.SetFocus();
        std::string text;
        std::size_t caret = 0;
        for (int step = 0; step < 40; ++step) {
            switch (dice.Below(7)) {
                case 0:
                    windows().PressKey(VK_LEFT);
                    caret -= caret > 0 ? 1 : 0;
                    break;
                case 1:
                    windows().PressKey(VK_RIGHT);
                    caret += caret < text.size() ? 1 : 0;
                    break;
                case 2:
                    windows().PressKey(VK_HOME);
                    caret = 0;
                    break;
                case 3:
                    windows().PressKey(VK_BACK);
                    if (caret > 0) text.erase(--caret, 1);
                    break;
                case 4:
                    windows().PressKey(VK_DELETE);
                    if (caret < text.size()) text.erase(caret, 1);
                    break;
                default: {
                    const std::string letter = dice.Text(1, "abc1");
                    windows().Type(letter);
                    if (text.size() < 12) text.insert(caret++, letter);
                }
            }
            CString shown;
            edit.GetWindowText(shown);
            ASSERT_EQ(shown.GetString(), text);
            int start = 0;
            int end = 0;
            edit.GetSel(start, end);
            ASSERT_EQ(static_cast<std::size_t>(start), caret);
        }
    }
}

}  // namespace

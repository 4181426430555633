#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/graphics/RecordingDevice.h"
#include "platform/windows/CEdit.h"
#include "platform/windows/CRectTracker.h"
#include "platform/windows/HeadlessSystem.h"
#include "platform/windows/TipWindow.h"

// What windows do when handlers get in each other's way.

namespace tessalink {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Log = std::vector<std::string>;

HeadlessSystem& desk() {
    return HeadlessSystem::Default();
}

// A window that notes what it gets, and once does what a test wants instead of handling it.
class Noted : public CWnd {
public:
    Noted(std::string name, Log& log) : m_name(std::move(name)), m_log(log) {}
    ~Noted() override { DestroyWindow(); }

    void Make(CWnd* parent, const CRect& rect, DWORD style = WS_VISIBLE) {
        Create(nullptr, "", (parent != nullptr ? WS_CHILD : 0) | style, rect, parent, 1);
    }
    void Once(UINT message, std::function<void()> does) {
        m_when = message;
        m_does = std::move(does);
    }
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        constexpr std::pair<UINT, const char*> cNames[] = {
            {WM_DESTROY, " ends"}, {WM_SETFOCUS, " focus"},      {WM_KILLFOCUS, " unfocus"},
            {WM_USER, " posted"},  {WM_LBUTTONDOWN, " pressed"}, {WM_MOUSEWHEEL, " turned"}};
        for (const auto& [known, text] : cNames) {
            if (known == message) m_log.push_back(m_name + text);
        }
        if (m_when != message) return CWnd::WindowProc(message, wParam, lParam);
        m_when = 0;
        const std::function<void()> does = m_does;
        does();
        return 0;
    }

private:
    std::string m_name;
    Log& m_log;
    UINT m_when = 0;
    std::function<void()> m_does;
};

class WindowCorners : public testing::Test {
protected:
    WindowCorners() {
        m_parent.Make(nullptr, CRect(0, 0, 100, 100));
        m_child.Make(&m_parent, CRect(0, 0, 50, 50));
        m_other.Make(&m_parent, CRect(80, 80, 300, 300));
        desk().Pump();
        m_log.clear();
    }
    Log taken() { return std::exchange(m_log, {}); }

    Log m_log;
    Noted m_parent{"parent", m_log};
    Noted m_child{"child", m_log};
    Noted m_other{"other", m_log};
};

TEST_F(WindowCorners, ParentDeletedWhileItsChildIsDestroyed) {
    auto parent = std::make_unique<Noted>("p", m_log);
    parent->Make(nullptr, CRect(0, 0, 100, 100));
    Noted child("c", m_log);
    child.Make(parent.get(), CRect(0, 0, 10, 10));
    child.Once(WM_DESTROY, [&] { parent.reset(); });
    child.DestroyWindow();
    EXPECT_EQ(child.GetSafeHwnd(), nullptr);
    EXPECT_THAT(taken(), ElementsAre("c ends", "p ends"));
}

TEST_F(WindowCorners, FocusTakenBackWasNeverElsewhere) {
    m_child.SetFocus();
    taken();
    m_child.Once(WM_KILLFOCUS, [&] { m_child.SetFocus(); });
    m_other.SetFocus();
    EXPECT_THAT(taken(), ElementsAre("child unfocus", "child focus"));
    EXPECT_EQ(CWnd::GetFocus(), &m_child);
}

TEST_F(WindowCorners, WindowThatEndsTakesNoFocus) {
    for (const UINT when : {WM_KILLFOCUS, WM_DESTROY}) {
        Noted window("w", m_log);
        window.Make(&m_parent, CRect(0, 0, 10, 10));
        window.SetFocus();
        taken();
        window.Once(when, [&] { window.SetFocus(); });
        window.DestroyWindow();
        EXPECT_THAT(taken(), ElementsAre("w unfocus", "w ends"));
    }
}

TEST_F(WindowCorners, MessagesToAnEarlierWindowOfTheObject) {
    // A new window may lie in memory where the one before lay.
    for (int i = 0; i < 2000; ++i) {
        m_other.PostMessage(WM_USER);
        m_other.DestroyWindow();
        m_other.Make(&m_parent, CRect(0, 0, 10, 10));
    }
    taken();
    desk().Pump();
    EXPECT_THAT(taken(), IsEmpty());
}

// Paints once; then a part of it is invalid anew, so many times.
class Restless : public CWnd {
public:
    ~Restless() override { DestroyWindow(); }
    void OnPaint() override {
        CPaintDC dc(this);
        if (again-- > 0) InvalidateRect(CRect(0, 0, 5, 5));
    }
    int again = 0;
};

TEST_F(WindowCorners, InvalidAreaIsKeptExactly) {
    Restless window;
    window.Create(nullptr, "", WS_VISIBLE, CRect(0, 0, 100, 100), nullptr, 0);
    desk().Pump();
    window.InvalidateRect(CRect(0, 0, 10, 10));
    window.InvalidateRect(CRect(90, 90, 100, 100));
    const std::int64_t before = desk().PaintedArea();
    desk().Pump();
    EXPECT_EQ(desk().PaintedArea() - before, 200) << "not what lies between";
    window.again = 3;
    const int count = desk().PaintCount();
    window.Invalidate();
    desk().Pump();
    EXPECT_EQ(desk().PaintCount() - count, 4) << "what becomes invalid while it is painted";
    window.MoveWindow(CRect(0, 0, 120, 100), 0);
    CRect rest;
    window.GetUpdateRect(&rest);
    EXPECT_EQ(rest, CRect(100, 0, 120, 100)) << "what a larger window shows more";
    window.MoveWindow(CRect(0, 0, 110, 50), 0);
    window.GetUpdateRect(&rest);
    EXPECT_EQ(rest, CRect(100, 0, 110, 50)) << "what a smaller window still has";
}

TEST_F(WindowCorners, PaintingThatThrowsLeavesNoDevice) {
    struct Failing : CWnd {
        void OnPaint() override { throw std::string("no paint"); }
    } window;
    window.Create(nullptr, "", WS_VISIBLE, CRect(0, 0, 10, 10), nullptr, 0);
    auto device = std::make_unique<RecordingDevice>();
    EXPECT_THROW(paintWindow(window, *device, Region(CRect(0, 0, 10, 10))), std::string);
    device.reset();
    CPaintDC dc(&window);
    dc.FillSolidRect(CRect(0, 0, 5, 5), 0);
}

TEST_F(WindowCorners, MouseFindsWhatIsSeen) {
    Noted front("front", m_log);
    front.Make(nullptr, CRect(0, 0, 100, 100));
    EXPECT_EQ(desk().WindowAt(CPoint(10, 10)), &front);
    m_parent.BringWindowToTop();
    EXPECT_EQ(desk().WindowAt(CPoint(10, 10)), &m_child) << "what is in it comes along";
    EXPECT_EQ(desk().WindowAt(CPoint(70, 70)), &m_parent);
    EXPECT_EQ(desk().WindowAt(CPoint(200, 200)), nullptr) << "windows end where their parents do";
    m_child.EnableWindow(0);
    desk().Click(CPoint(10, 10));
    EXPECT_THAT(taken(), ElementsAre("parent pressed"));
    desk().Turn(CPoint(90, 90), 120);
    EXPECT_THAT(taken(), ElementsAre("other turned", "parent turned"));
}

TEST_F(WindowCorners, PlaceholderGivesItsTextAndField) {
    CEdit placeholder;
    placeholder.Create(WS_CHILD | WS_VISIBLE, CRect(1, 2, 30, 20), &m_parent, 7);
    placeholder.SetWindowText("abc");
    CEdit edit;
    ASSERT_TRUE(edit.SubclassDlgItem(7, &m_parent));
    edit.SetSel(1, 2);
    edit.ReplaceSel("x");
    CString text;
    edit.GetWindowText(text);
    EXPECT_STREQ(text, "axc");
}

TEST_F(WindowCorners, EditBoxRefusesWhatItsStyleDoes) {
    struct {
        const char* name;
        DWORD style;
        const char* text;
        std::function<void(CEdit&)> does;
        const char* result;
    } const cases[] = {
        {"undo without a change", 0, "ab", [](CEdit& edit) { edit.Undo(); }, "ab"},
        {"undo when it may be read only", 0, "ab",
         [](CEdit& edit) {
             desk().Type("c");
             edit.SetReadOnly();
             edit.Undo();
         },
         "cab"},
        {"created to be read", ES_READONLY, "ab", [](CEdit&) { desk().Type("c"); }, "ab"},
        {"several lines in one", 0, "ab",
         [](CEdit& edit) {
             desk().SetClipboard("x\r\ny");
             edit.Paste();
         },
         "xab"},
        {"letters among digits", ES_NUMBER, "1",
         [](CEdit& edit) {
             desk().SetClipboard("2a");
             edit.Paste();
         },
         "1"},
    };
    for (const auto& c : cases) {
        CEdit edit;
        edit.Create(WS_CHILD | WS_VISIBLE | c.style, CRect(0, 0, 50, 20), &m_parent, 7);
        edit.SetWindowText(c.text);
        edit.SetFocus();
        c.does(edit);
        CString text;
        edit.GetWindowText(text);
        EXPECT_STREQ(text, c.result) << c.name;
    }
    CEdit lines;
    lines.Create(WS_CHILD | ES_MULTILINE, CRect(0, 0, 50, 20), &m_parent, 7);
    lines.SetWindowText("ab\r\ncd");
    lines.SetSel(5, 5);
    EXPECT_EQ(lines.LineIndex(-1), 4);
}

TEST(HeadlessSystem, OneOfManyHasAClipboardOfItsOwn) {
    HeadlessSystem own;
    setWindowSystem(&own);
    {
        CEdit edit;
        edit.Create(WS_VISIBLE, CRect(0, 0, 10, 10), nullptr, 0);
        edit.SetWindowText("own");
        edit.SetSel(0, -1);
        edit.Copy();
    }
    setWindowSystem(nullptr);
    CString text;
    own.ClipboardText(text);
    EXPECT_STREQ(text, "own");
}

// Two screens beside each other.
struct TwoScreens : HeadlessSystem {
    CRect ScreenAt(CPoint point) const override {
        return point.x < 800 ? CRect(0, 0, 800, 600) : CRect(800, 0, 1800, 1000);
    }
};

TEST(TipWindow, StaysOnTheScreenOfItsPoint) {
    TwoScreens screens;
    setWindowSystem(&screens);
    {
        TipWindow tip;
        CFont font;
        font.CreateFont(16, 0, 0, 0, FW_NORMAL, 0, 0, 0, ANSI_CHARSET, 0, 0, 0, 0, "Arial");
        const struct {
            CPoint point;
            bool isShifted;
            bool isAbove;
        } cases[] = {{{50, 50}, false, false},
                     {{790, 50}, true, false},
                     {{50, 590}, false, true},
                     {{805, 590}, false, false},
                     {{1790, 995}, true, true}};
        for (const auto& c : cases) {
            tip.ShowText("A hint of some length", c.point, &font);
            CRect place;
            tip.GetWindowRect(&place);
            const CRect screen = screens.ScreenAt(c.point);
            CRect seen;
            seen.IntersectRect(&screen, &place);
            EXPECT_EQ(seen, place) << c.point.x;
            EXPECT_EQ(place.left, c.isShifted ? screen.right - place.Width() : c.point.x);
            EXPECT_EQ(place.bottom < c.point.y, c.isAbove) << c.point.x;
        }
    }
    setWindowSystem(nullptr);
}

TEST_F(WindowCorners, TrackedRectangleFollowsUntilTheButtonIsReleased) {
    struct {
        std::function<void()> last;
        CRect rect;
        BOOL moved;
    } const cases[] = {{[] { desk().Release(CPoint(40, 45)); }, CRect(30, 25, 40, 35), 1},
                       {[] { desk().PressKey(VK_ESCAPE); }, CRect(10, 10, 20, 20), 0},
                       {[] { desk().Release(CPoint(20, 30)); }, CRect(10, 10, 20, 20), 0},
                       {[&] { m_child.DestroyWindow(); }, CRect(10, 10, 20, 20), 0},
                       {[] {}, CRect(10, 10, 20, 20), 0}};
    for (const auto& c : cases) {
        if (m_child.GetSafeHwnd() == nullptr) m_child.Make(&m_parent, CRect(0, 0, 50, 50));
        m_child.SetFocus();
        CRectTracker tracker(CRect(10, 10, 20, 20));
        desk().Queue([] { desk().MoveMouse(CPoint(500, 500)); });
        desk().Queue(c.last);
        EXPECT_EQ(tracker.Track(&m_child, CPoint(20, 30)), c.moved);
        EXPECT_EQ(tracker.m_rect, c.rect);
        EXPECT_EQ(CWnd::GetCapture(), nullptr);
    }
}

}  // namespace
}  // namespace tessalink

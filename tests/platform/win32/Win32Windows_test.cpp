// Windows of the library in those of a host, and what the platform does to them.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dataentry/DataEntryCtl.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TextDataEntryUI.h"
#include "platform/win32/CInvalidWindowException.h"
#include "platform/windows/CEdit.h"
#include "tests/platform/win32/Win32Driver.h"

namespace tessalink::test {
namespace {

constexpr UINT cId = 7;

struct FormOfTwo {
    explicit FormOfTwo(CWnd& parent) : form(new SingleColLayoutMgr) {
        form.AddItem(new TextDataEntryItem("Ada", "Name"), new TextDataEntryUI(80, 20, 0, 8));
        form.AddItem(new IntegerDataEntryItem(42, "Age"), new IntegerDataEntryUI(80, 8));
        form.Create(CRect(0, 0, 300, 200), cId, &parent);
    }
    DataEntryCtl form;
};

TEST(Win32Windows, TabLeadsThroughTheHostAndBack) {
    Win32Driver driver;
    FormOfTwo two(driver.Host());
    two.form.TabMoves(true);
    driver.Pump();
    driver.PressKey(VK_TAB, {});
    EXPECT_TRUE(two.form.IsChild(CWnd::GetFocus()) != 0);
    EXPECT_EQ(two.form.GetCurrItemIdx(), 0);
    EXPECT_EQ(::GetFocus(), platformWindow(*CWnd::GetFocus()));
    driver.PressKey(VK_TAB, {false, true});
    EXPECT_EQ(::GetFocus(), driver.Before());
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    driver.PressKey(VK_TAB, {});
    driver.PressKey(VK_TAB, {});
    driver.PressKey(VK_TAB, {});
    EXPECT_EQ(::GetFocus(), driver.After());
    driver.PressKey(VK_TAB, {false, true});
    EXPECT_EQ(two.form.GetCurrItemIdx(), 1);
}

// The host.

struct Heard {
    UINT message;
    HWND from;
    UINT_PTR id;
    int code;
};

TEST(Win32Windows, HostsHearAsFromAnyControl) {
    HostFrame frame(CSize(500, 400));
    const HWND holder = frame.AddHolder(CRect(0, 0, 500, 400));
    std::vector<Heard> heard;
    bool refuses = false;
    frame.reaction = [&](UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_COMMAND) {
            heard.push_back({message, reinterpret_cast<HWND>(lParam), LOWORD(wParam),
                             static_cast<int>(HIWORD(wParam))});
        }
        if (message != WM_NOTIFY) return false;
        const auto& header = *reinterpret_cast<const NMHDR*>(lParam);
        heard.push_back({message, header.hwndFrom, header.idFrom, static_cast<int>(header.code)});
        frame.answer = refuses && static_cast<int>(header.code) == DATAENTRY_CHANGING ? 1 : 0;
        return true;
    };
    HostWindow host(holder);
    FormOfTwo two(host);
    CEdit edit;
    edit.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(0, 220, 100, 244), &host, 9);
    frame.Pump();
    heard.clear();
    two.form.SetFocus();
    ASSERT_FALSE(heard.empty());
    EXPECT_EQ(heard.front().message, UINT{WM_NOTIFY});
    EXPECT_EQ(heard.front().from, platformWindow(two.form));
    EXPECT_EQ(heard.front().id, cId);
    EXPECT_EQ(heard.front().code, static_cast<int>(NM_SETFOCUS));
    heard.clear();
    edit.SetFocus();
    edit.ReplaceSel("x");
    const auto isChange = [&](const Heard& one) {
        return one.message == WM_COMMAND && one.code == EN_CHANGE &&
               one.from == platformWindow(edit) && one.id == 9;
    };
    EXPECT_EQ(std::count_if(heard.begin(), heard.end(), isChange), 1);
    heard.clear();
    edit.SetWindowText("silent");
    EXPECT_TRUE(std::none_of(heard.begin(), heard.end(), isChange));
}

TEST(Win32Windows, HandlesThatAreNoWindow) {
    for (const UINT_PTR value : {UINT_PTR{0}, UINT_PTR{0x7FFF1}}) {
        const HWND handle = reinterpret_cast<HWND>(value);
        try {
            const HostWindow host(handle);
            ADD_FAILURE() << value;
        } catch (const CInvalidWindowException& error) {
            EXPECT_THAT(error.what(), testing::HasSubstr("does not exist"));
        }
        EXPECT_EQ(windowFromPlatform(handle), nullptr);
        EXPECT_TRUE(commitEntries(handle));
    }
    EXPECT_THROW(HostWindow(::GetDesktopWindow()), CInvalidWindowException);
    const CWnd none;
    EXPECT_EQ(platformWindow(none), nullptr);
}

TEST(Win32Windows, EndWithTheHostsWindow) {
    auto frame = std::make_unique<HostFrame>(CSize(500, 400));
    const HWND holder = frame->AddHolder(CRect(0, 0, 500, 400));
    HostWindow host(holder);
    FormOfTwo two(host);
    two.form.SetFocus();
    const HWND form = platformWindow(two.form);
    frame.reset();
    EXPECT_EQ(::IsWindow(form), 0);
    EXPECT_EQ(two.form.GetSafeHwnd(), nullptr);
    EXPECT_EQ(host.GetSafeHwnd(), nullptr);
    EXPECT_EQ(CWnd::GetFocus(), nullptr);
    HostFrame::PumpAll(nullptr);
}

TEST(Win32Windows, AChildThatTheHostDestroysIsGone) {
    HostFrame frame(CSize(500, 400));
    HostWindow host(frame.Handle());
    FormOfTwo two(host);
    two.form.SetFocus();
    ::DestroyWindow(platformWindow(two.form));
    EXPECT_EQ(two.form.GetSafeHwnd(), nullptr);
    EXPECT_EQ(host.GetChildCount(), 0);
    EXPECT_NE(two.form.Create(CRect(0, 0, 100, 100), cId, &host), 0);
}

// Several parents at one window, and procedures that the host puts before ours, in any order.
TEST(Win32Windows, ProceduresOfTheHostStayInOrder) {
    static WNDPROC before = nullptr;
    static int count = 0;
    HostFrame frame(CSize(300, 200));
    const auto original = ::GetWindowLongPtrW(frame.Handle(), GWLP_WNDPROC);
    {
        const HostWindow first(frame.Handle());
        {
            const HostWindow second(frame.Handle());
            ::SetWindowPos(frame.Handle(), nullptr, 0, 0, 320, 220, SWP_NOMOVE);
            CRect client;
            second.GetClientRect(&client);
            EXPECT_EQ(client.Size(), CSize(320, 220));
        }
        ::SetWindowPos(frame.Handle(), nullptr, 0, 0, 340, 240, SWP_NOMOVE);
        CRect client;
        first.GetClientRect(&client);
        EXPECT_EQ(client.Size(), CSize(340, 240));
    }
    EXPECT_EQ(::GetWindowLongPtrW(frame.Handle(), GWLP_WNDPROC), original);
    auto host = std::make_unique<HostWindow>(frame.Handle());
    const WNDPROC own = [](HWND window, UINT message, WPARAM wParam, LPARAM lParam) -> LRESULT {
        ++count;
        return ::CallWindowProcW(before, window, message, wParam, lParam);
    };
    before = reinterpret_cast<WNDPROC>(
        ::SetWindowLongPtrW(frame.Handle(), GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(own)));
    host.reset();
    ::SendMessageW(frame.Handle(), WM_NULL, 0, 0);
    EXPECT_EQ(count, 1);
}

// Windows and their objects may end in any handler.

class Quitter : public CWnd {
public:
    explicit Quitter(UINT message) : m_message(message) {}
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        if (message == m_message) {
            delete this;
            return 0;
        }
        return CWnd::WindowProc(message, wParam, lParam);
    }
    UINT OnGetDlgCode() override { return DLGC_WANTALLKEYS; }

private:
    UINT m_message;
};

TEST(Win32Windows, EndInEveryMessage) {
    const UINT messages[] = {WM_KEYDOWN,   WM_CHAR,          WM_LBUTTONDOWN, WM_LBUTTONUP,
                             WM_MOUSEMOVE, WM_SETFOCUS,      WM_KILLFOCUS,   WM_MOUSEWHEEL,
                             WM_VSCROLL,   WM_PAINT,         WM_CONTEXTMENU, WM_SETCURSOR,
                             WM_KEYUP,     WM_SYSCOLORCHANGE};
    for (const UINT message : messages) {
        Win32Driver driver;
        auto* const window = new Quitter(message);
        const WindowGuard alive(*window);
        window->Create(nullptr, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL,
                       CRect(10, 10, 110, 110), &driver.Host(), 1);
        const HWND handle = platformWindow(*window);
        if (alive) driver.Pump();
        if (alive) window->SetFocus();
        const CPoint place(60, 84);
        if (alive) driver.PressKey('A', {});
        if (alive) driver.MoveMouse(place);
        if (alive) driver.Click(place, false);
        if (alive) driver.Turn(place, 120);
        if (alive) ::SendMessageW(handle, WM_VSCROLL, SB_LINEDOWN, 0);
        if (alive) ::SendMessageW(handle, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(handle), -1);
        if (alive) settingsChanged();
        if (alive) driver.Leave();
        EXPECT_FALSE(alive) << message;
        EXPECT_EQ(::IsWindow(handle), 0) << message;
    }
}

// Input.

class Listener : public CWnd {
public:
    void OnKeyDown(UINT key, UINT repeat, UINT flags) override {
        log += "k" + std::to_string(key) + (repeat > 1 ? "*" + std::to_string(repeat) : "") +
               ((flags & KF_REPEAT) != 0 ? "+ " : " ");
    }
    void OnChar(UINT ch, UINT, UINT) override { log += "c" + std::to_string(ch) + " "; }
    BOOL OnMouseWheel(UINT, short delta, CPoint) override {
        log += "w" + std::to_string(delta) + " ";
        return 1;
    }
    void OnVScroll(UINT code, UINT position, CWnd*) override {
        log += "s" + std::to_string(code) + "@" + std::to_string(position) + " ";
    }
    void OnContextMenu(CWnd*, CPoint point) override {
        log += "m" + std::to_string(point.x) + "," + std::to_string(point.y) + " ";
    }
    UINT OnGetDlgCode() override { return DLGC_WANTALLKEYS; }
    std::string Take() { return std::exchange(log, {}); }

    std::string log;
};

struct Heeding {
    Heeding() {
        window.Create(nullptr, "", WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL,
                      CRect(10, 10, 110, 110), &driver.Host(), 1);
        driver.Pump();
        window.SetFocus();
        window.Take();
    }
    HWND Handle() const { return platformWindow(window); }
    std::string Post(UINT message, WPARAM wParam, LPARAM lParam) {
        ::PostMessageW(Handle(), message, wParam, lParam);
        driver.Pump();
        return window.Take();
    }

    Win32Driver driver;
    Listener window;
};

TEST(Win32Windows, KeysComeWithTheirCharacters) {
    Heeding heeding;
    const auto press = [&](UINT key, bool shift, bool ctrl, LPARAM info = 1) {
        const KeyState state({{VK_SHIFT, shift}, {VK_CONTROL, ctrl}, {key, true}});
        return heeding.Post(WM_KEYDOWN, key, info);
    };
    EXPECT_EQ(press('A', false, false), "k65 c97 ");
    EXPECT_EQ(press('A', true, false), "k65 c65 ");
    EXPECT_EQ(press('A', false, true), "k65 c1 ");
    EXPECT_EQ(press(VK_RETURN, false, false), "k13 c13 ");
    EXPECT_EQ(press(VK_RETURN, false, true), "k13 c10 ");
    EXPECT_EQ(press(VK_LEFT, false, false), "k37 ");
    EXPECT_EQ(press('A', false, false, 0x40000003), "k65*3+ c97 ");
    // Pages of the host.
    EXPECT_EQ(press(VK_TAB, false, true), "");
    // Characters alone: those of an input method, and some that no text of ours can hold.
    EXPECT_EQ(heeding.Post(WM_CHAR, 0x20AC, 1), "c128 ");
    EXPECT_EQ(heeding.Post(WM_CHAR, 0x0416, 1), "");
    EXPECT_EQ(heeding.Post(WM_CHAR, 0xD83D, 1), "");
    EXPECT_EQ(heeding.Post(WM_CHAR, 0xDE00, 1), "");
}

TEST(Win32Windows, SmallTurnsAddUp) {
    Heeding heeding;
    const auto turn = [&](int delta) {
        return heeding.Post(WM_MOUSEWHEEL,
                            MAKEWPARAM(0, static_cast<WORD>(static_cast<short>(delta))),
                            MAKELPARAM(50, 50));
    };
    EXPECT_EQ(turn(120), "w120 ");
    EXPECT_EQ(turn(30), "");
    EXPECT_EQ(turn(30), "w40 ");
    EXPECT_EQ(turn(-15), "");
    EXPECT_EQ(turn(-25), "w-40 ");
}

TEST(Win32Windows, ScrollBarsTellWholePositions) {
    Heeding heeding;
    SCROLLINFO info = {};
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = 200'000;
    info.nPage = 100;
    info.nPos = 70'000;
    heeding.window.SetScrollInfo(SB_VERT, &info);
    const auto style = static_cast<DWORD>(::GetWindowLongW(heeding.Handle(), GWL_STYLE));
    EXPECT_NE(style & WS_VSCROLL, 0u);
    RECT client = {};
    ::GetClientRect(heeding.Handle(), &client);
    CRect ours;
    heeding.window.GetClientRect(&ours);
    EXPECT_EQ(CRect(client), ours);
    EXPECT_EQ(heeding.Post(WM_VSCROLL, SB_PAGEDOWN, 0), "s3@0 ");
    SCROLLINFO shown = {};
    shown.cbSize = sizeof(shown);
    shown.fMask = SIF_ALL;
    ::GetScrollInfo(heeding.Handle(), SB_VERT, &shown);
    EXPECT_EQ(shown.nPos, 70'000);
    EXPECT_EQ(heeding.Post(WM_VSCROLL, MAKEWPARAM(SB_THUMBPOSITION, 70'000 & 0xFFFF), 0),
              "s4@" + std::to_string(shown.nTrackPos == 70'000 ? 70'000 : 70'000 & 0xFFFF) + " ");
    info.nMax = 50;
    heeding.window.SetScrollInfo(SB_VERT, &info);
    EXPECT_EQ(static_cast<DWORD>(::GetWindowLongW(heeding.Handle(), GWL_STYLE)) & WS_VSCROLL, 0u);
}

TEST(Win32Windows, MenusAreAskedForWhereTheMouseIs) {
    Heeding heeding;
    const LPARAM place = MAKELPARAM(33, 44);
    EXPECT_EQ(heeding.Post(WM_CONTEXTMENU, 0, place), "m33,44 ");
    CRect window;
    heeding.window.GetWindowRect(&window);
    const CPoint middle = window.CenterPoint();
    EXPECT_EQ(heeding.Post(WM_CONTEXTMENU, 0, -1),
              "m" + std::to_string(middle.x) + "," + std::to_string(middle.y) + " ");
}

// Texts that others put on the clipboard.

void putOnClipboard(const std::wstring& text) {
    const std::size_t size = (text.size() + 1) * sizeof(wchar_t);
    const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, size);
    std::memcpy(::GlobalLock(memory), text.c_str(), size);
    ::GlobalUnlock(memory);
    ASSERT_NE(::OpenClipboard(nullptr), 0);
    ::EmptyClipboard();
    ::SetClipboardData(CF_UNICODETEXT, memory);
    ::CloseClipboard();
}

TEST(Win32Windows, FieldsRefuseWhatTheyCantHold) {
    Win32Driver driver;
    CEdit edit;
    edit.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP, CRect(0, 0, 200, 24), &driver.Host(), 9);
    driver.Pump();
    edit.SetFocus();
    edit.SetLimitText(8);
    const auto pasted = [&](const wchar_t* text) {
        edit.SetWindowText("");
        putOnClipboard(text);
        ::SendMessageW(platformWindow(edit), WM_PASTE, 0, 0);
        CString shown;
        edit.GetWindowText(shown);
        return std::string(shown.GetString());
    };
    EXPECT_EQ(pasted(L"\u00C5gren"), "\xC5gren");
    EXPECT_EQ(pasted(L"\u0416"), "");
    EXPECT_EQ(pasted(L"123456789"), "");
    EXPECT_EQ(pasted(L"12345678"), "12345678");
    EXPECT_EQ(pasted(L"one\r\ntwo"), "one");
    edit.SetWindowText("abc def");
    edit.SetSel(7, 7);
    const KeyState state({{VK_CONTROL, true}});
    driver.PressKey(VK_BACK, {true});
    CString rest;
    edit.GetWindowText(rest);
    EXPECT_STREQ(rest, "abc ");
}

}  // namespace
}  // namespace tessalink::test

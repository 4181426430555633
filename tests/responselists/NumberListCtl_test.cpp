#include "responselists/NumberListCtl.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "tests/responselists/ListHost.h"

using tessalink::test::ListHost;
using tessalink::test::Log;
using tessalink::test::windows;

namespace {

const char* names[] = {"Scale A", "100 %d", nullptr, "Scale D", "Scale E", "Scale F"};
int ranges[] = {0, 40, -5, 5, 10, 5, 0, 9, 0, 9, 0, 99999};
constexpr UINT cMissing = 999;

class NumberListCtlTest : public testing::Test {
protected:
    template <class List = NumberListCtl2, class... More>
    List& show(int* allowed, More... more) {
        auto list = std::make_unique<List>(6, names, allowed, more...);
        List& shown = *list;
        m_list = std::move(list);
        m_list->Create(CRect(0, 0, 400, 100), 5, &m_host);
        m_list->SetFocus();
        m_host.Take();
        return shown;
    }
    CEdit& box() { return *static_cast<CEdit*>(m_list->GetDlgItem(NumberListCtl::cEditId)); }
    CString typed() {
        CString text;
        box().GetWindowText(text);
        return text;
    }
    // Types: \r is Return, \x1b Escape, \t Tab, v and ^ the arrows.
    void key(const std::string& keys) {
        for (const char ch : keys) {
            const auto code = static_cast<UINT>(ch);
            if (ch == 'v' || ch == '^') {
                windows().PressKey(ch == 'v' ? VK_DOWN : VK_UP);
            } else if (ch < ' ') {
                windows().PressKey(ch == '\t' ? VK_TAB : code);
            } else {
                windows().Type(std::string(1, ch));
            }
        }
        windows().Pump();
    }

    ListHost m_host;
    std::unique_ptr<NumberListCtl> m_list;
};

TEST_F(NumberListCtlTest, NumbersAreCommittedWhenTheyAreLeft) {
    struct {
        std::string keys;
        bool hasRanges;
        Log log;
        std::string box;
    } const cases[] = {
        {"12v", true, {"1 0 12", "2 1 0"}, "0"},
        {"0v", true, {"2 1 0"}, "0"},
        {"45v", true, {"box Scale A The maximum value is 40!"}, "45"},
        {"-1\r", true, {"box Scale A The minimum value is 0!"}, "-1"},
        {"45v7v", true, {"box Scale A The maximum value is 40!", "1 0 7", "2 1 0"}, "0"},
        {"45\x1bv", true, {"2 1 0"}, "0"},
        {"v-6v", true, {"2 1 0", "box 100 %d The minimum value is -5!"}, "-6"},
        {"vv7v", true, {"2 1 0", "2 2 0", "box  The minimum value is 10!"}, "7"},
        {"-v", false, {"2 1 0"}, "0"},
        {"-7v", false, {"1 0 -7", "2 1 0"}, "0"},
        {"99999v^", false, {"1 0 99999", "2 1 0", "2 0 0"}, "99999"},
        {"123456", false, {"bell"}, "12345"},
        {"1-x.", false, {"bell", "bell", "bell"}, "1"},
        {"\r\r", false, {"2 1 0", "2 3 0"}, "0"},
        {"\r\r5\r8\r", false, {"2 1 0", "2 3 0", "1 3 5", "2 5 0", "1 5 8"}, "8"},
        {"\r\r\r005\r", true, {"2 1 0", "2 3 0", "2 5 0", "1 5 5"}, "5"},
    };
    for (const auto& c : cases) {
        show(c.hasRanges ? ranges : nullptr);
        if (c.keys.find("\r\r") != std::string::npos) {
            for (const int index : {2, 4}) m_list->SetReadOnlyItem(index);
        }
        key(c.keys);
        EXPECT_EQ(m_host.Take(), c.log) << c.keys;
        EXPECT_EQ(typed(), c.box) << c.keys;
    }
    show(ranges);
    key("45v");
    EXPECT_EQ(m_host.boxFlags, UINT{MB_OK | MB_ICONEXCLAMATION});
    EXPECT_EQ(m_list->GetItem(0), 0);
    EXPECT_EQ(m_list->OnGetDlgCode(), UINT{DLGC_WANTARROWS});
}

TEST_F(NumberListCtlTest, ARefusedNumberWaitsForTheFocusAndIsAskedForOnce) {
    auto& list = show(ranges);
    key("45\t");
    EXPECT_EQ(m_host.Take(), (Log{"-8 -1 0"}));
    list.SetCurrItem(2);
    EXPECT_EQ(m_host.Take(), (Log{"box Scale A The maximum value is 40!"}));
    EXPECT_EQ(CWnd::GetFocus(), &m_host.other) << "the program's move leaves it there";
    m_list->SetFocus();
    m_host.other.SetFocus();
    m_host.Take();
    EXPECT_TRUE(m_list->AccessibleChild(0).isInvalid);
    EXPECT_STREQ(typed(), "45");
    EXPECT_TRUE(box().IsWindowVisible());
    m_list->SetFocus();
    m_host.other.SetFocus();  // before it could ask
    windows().Pump();
    EXPECT_EQ(m_host.Take(), (Log{"-7 0 0", "-8 -1 0"}));
    const CRect third = m_list->GetItemRect(2);
    windows().Click({third.left + 5, third.top + 5});  // returns and moves on at once
    windows().Pump();
    EXPECT_EQ(m_host.Take(), (Log{"-7 0 0", "box Scale A The maximum value is 40!"}));
    EXPECT_FALSE(m_list->AccessibleChild(0).isInvalid);
    key("4\t");
    EXPECT_EQ(m_host.Take(), (Log{"1 0 4", "-8 -1 0"}));
    EXPECT_FALSE(box().IsWindowVisible());
}

TEST_F(NumberListCtlTest, WhatWasLeftIsTypedOverWhenTheFocusIsBack) {
    auto& list = show(ranges);
    key("99");
    m_host.other.SetFocus();
    tessalink::DoubleKeying keying;
    EXPECT_EQ(list.BeginVerification(keying), 0) << "asked for here, and no more";
    list.SetFocus();
    key("7");
    EXPECT_EQ(typed(), "7");
}

TEST_F(NumberListCtlTest, AMessageBoxMayTakeTheFocus) {
    show(ranges);
    m_host.whenBox = [&] { m_host.other.SetFocus(); };
    key("45v");
    EXPECT_EQ(m_host.Take(), (Log{"box Scale A The maximum value is 40!", "-8 -1 0", "-7 0 0"}));
    EXPECT_EQ(CWnd::GetFocus(), &box());
    EXPECT_STREQ(typed(), "45");
    m_host.whenBox = nullptr;
    key("4v");
    EXPECT_EQ(m_host.Take(), (Log{"1 0 4", "2 1 0"}));
}

TEST_F(NumberListCtlTest, MissingValues) {
    auto& list = show<NumberListCtl3>(ranges, cMissing);
    EXPECT_EQ(list.GetItem(3), static_cast<int>(cMissing));
    EXPECT_STREQ(typed(), "");
    key("v5v\b999v");
    EXPECT_EQ(m_host.Take(), (Log{"2 1 0", "1 1 5", "2 2 0", "2 3 0"})) << "the code is exempt";
    list.SetItem(0, 12);
    list.SetMissingValue(7);
    EXPECT_EQ(list.GetItem(3), 7);
    EXPECT_EQ(list.GetMissingValue(), 7U);
    EXPECT_STREQ(list.AccessibleChild(3).value, "");
    list.SetItemMissing(0);
    EXPECT_EQ(list.GetItem(0), 7);
    // The last commit of a list that goes still knows what is missing.
    list.SetItem(3, 4);
    key("\b");
    m_list.reset();
    EXPECT_EQ(m_host.Take(), (Log{"1 3 7", "-8 -1 0"}));
}

TEST_F(NumberListCtlTest, TheSecondPassStopsAtDifferences) {
    auto& list = show<NumberListCtl3>(ranges, cMissing);
    key("12\r3\r\r4\r");
    tessalink::DoubleKeying keying;
    EXPECT_EQ(list.BeginVerification(keying), 1);
    m_host.Take();
    struct {
        std::string keys;
        Log log;
        const char* spoken;  // of the current entry
    } const cases[] = {
        {"v^", {"2 1 0", "2 0 0"}, ""},  // passed over
        {"12\r", {"5 0 12", "2 1 0"}, ""},
        {"4\r", {"bell", "4 1 4"}, "First 3, now 4"},
        {"9v", {"box 100 %d The maximum value is 5!"}, "First 3, now 4"},
        {"4v", {"1 1 4", "5 1 4", "2 2 0"}, ""},
        {"\r", {"5 2 999", "2 3 0"}, ""},
        {"\r", {"bell", "4 3 999"}, "First 4, now none"},
        {"4\r", {"5 3 4", "2 4 0"}, ""},
        {"\r", {"5 4 999", "2 5 0"}, ""},
        {"^13v", {"2 4 0", "box Scale E The maximum value is 9!"}, ""},
        {"\x1bv\r", {"2 5 0", "5 5 999", "bell", "6 -1 1"}, ""},
        {"^", {"2 4 0"}, ""},
    };
    for (const auto& c : cases) {
        key(c.keys);
        EXPECT_EQ(m_host.Take(), c.log) << c.keys;
        EXPECT_STREQ(list.AccessibleChild(list.GetCurrItemIdx()).value, c.spoken) << c.keys;
    }
    EXPECT_EQ(keying.SettledCount(), 6);
    EXPECT_EQ(keying.CorrectionCount(), 1);
    EXPECT_STREQ(list.AccessibleChild(1).value, "4");
}

TEST_F(NumberListCtlTest, ReadOnlyEntriesAndLists) {
    auto& list = show(nullptr);
    key("8");
    list.SetReadOnlyItem(0);
    EXPECT_STREQ(typed(), "0");
    key("5v\b6v");
    EXPECT_EQ(m_host.Take(), (Log{"bell", "2 1 0", "1 1 6", "2 2 0"}));
    list.SetReadOnlyItem(65536 + 3);
    EXPECT_TRUE(list.AccessibleChild(3).isReadOnly);
    key("7");
    EXPECT_EQ(list.SetReadOnly(1), 0);
    EXPECT_STREQ(typed(), "0");
    key("5\rv");
    EXPECT_EQ(m_host.Take(), (Log{"bell", "2 3 0"}));
    EXPECT_EQ(list.SetReadOnly(0), 1);
}

TEST_F(NumberListCtlTest, PastedTextsAreNumbers) {
    show(nullptr);
    for (const auto& [text, box] : {std::pair("12", "12"), std::pair("1 2", "12"),
                                    std::pair("-", "12"), std::pair("3456", "1212")}) {
        if (*text == '3') key("12");  // makes four characters
        windows().SetClipboard(text);
        m_host.Take();
        CWnd::GetFocus()->SendMessage(WM_PASTE);
        EXPECT_STREQ(typed(), box) << text;
        EXPECT_EQ(m_host.Take(), std::string(text) == "12" ? Log{} : Log{"bell"}) << text;
    }
}

TEST_F(NumberListCtlTest, LegendsLayoutAndIndexes) {
    auto& list = show(nullptr);
    EXPECT_EQ(list.SetLegend(2, nullptr, nullptr), 0);
    EXPECT_EQ(list.GetItemCount(), 0);
    EXPECT_EQ(CWnd::GetFocus(), &list) << "the edit box is gone";
    EXPECT_EQ(list.SetLegend(3, names, nullptr), 1);
    EXPECT_EQ(CWnd::GetFocus(), &box());
    EXPECT_EQ(list.SetLegend(-1, names, nullptr), 0);
    EXPECT_EQ(list.SetLegend(6, names, nullptr), 1);
    for (const int index : {-1, 6}) {
        EXPECT_THROW(list.GetItem(index), CInvalidArgException);
        EXPECT_THROW(list.SetItem(index, 1), CInvalidArgException);
    }
    list.SetCurrItem(INT_MAX);
    EXPECT_EQ(list.GetCurrItemIdx(), 5);
    list.SetCurrItem(INT_MIN);
    EXPECT_EQ(list.GetCurrItemIdx(), 0);

    CClientDC dc(&list);
    const CRect cell = list.GetItemRect(0);
    EXPECT_EQ(cell.Height(), 3 * dc.GetTextExtent("9", 1).cy / 2);
    const int width = cell.Width();
    list.SetMaxTextLen(9);
    EXPECT_EQ(list.GetItemRect(0).Width() - width, 4 * dc.GetTextExtent("9", 1).cx);
    list.SetMaxTextLen(INT_MAX);
    EXPECT_EQ(list.GetMaxTextLen(), NumberListCtl::cLongestText);
    key(std::string(NumberListCtl::cMaxReadLen - 1, '0') + "12v");
    EXPECT_EQ(list.GetItem(0), 1) << "the last character is not read";
}

TEST_F(NumberListCtlTest, ANotificationMayDestroyDeleteOrReplaceTheList) {
    const std::vector<std::function<void()>> deeds = {
        [&] { m_list->DestroyWindow(); },
        [&] { m_list.reset(); },
        [&] { m_list->SetLegend(6, names, nullptr); },
        [&] { m_list->SetLegend(0, nullptr, nullptr); },
    };
    constexpr int cBox = 100;
    for (std::size_t deed = 0; deed < deeds.size(); ++deed) {
        for (const int code :
             {1, 2, cBox, static_cast<int>(NM_SETFOCUS), static_cast<int>(NM_KILLFOCUS)}) {
            bool done = false;
            m_host.whenTold = nullptr;
            m_host.whenBox = nullptr;
            show(ranges);
            m_host.other.SetFocus();
            m_host.whenTold = [&](int told) {
                if (told == code && !std::exchange(done, true)) deeds[deed]();
            };
            m_host.whenBox = [&] { m_host.whenTold(cBox); };
            m_list->SetFocus();
            for (const char ch : std::string("77v3v4v\t")) {
                if (!done) key(std::string(1, ch));
            }
            windows().Pump();
            m_host.whenTold = nullptr;
            m_host.whenBox = nullptr;
            EXPECT_TRUE(done) << deed << " " << code;
            if (deed == 2) {
                EXPECT_EQ(m_list->GetCurrItemIdx(), 0) << code;
                EXPECT_EQ(m_list->GetItem(0), 0) << code;
            }
        }
    }
}

}  // namespace

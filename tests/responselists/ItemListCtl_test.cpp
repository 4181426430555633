#include "responselists/ItemListCtl.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/RecordingDevice.h"
#include "tests/responselists/ListHost.h"
#include "tests/support/Dice.h"
#include "tests/support/ResponseGrammar.h"

using tessalink::test::Dice;
using tessalink::test::ListHost;
using tessalink::test::Log;
using tessalink::test::ResponseGrammar;
using tessalink::test::windows;
using Verdict = ResponseGrammar::Verdict;

namespace {

constexpr const char* cYesNo = "[Yes|Yy|1][No|Nn|2]";
constexpr std::uint16_t cNone = ItemListCtl::cNoResponse;

// Shows what a definition was read as.
template <class List>
class Opened : public List {
public:
    using List::List;

    ResponseGrammar::Responses Of(int item) const {
        ResponseGrammar::Responses all;
        const auto* responses = this->responses_of(item);
        if (responses == nullptr) return all;
        for (const auto& response : *responses) {
            all.push_back(
                {response.caption.GetString(), response.keys.GetString(), response.value});
        }
        return all;
    }
    Verdict Read(int count, const std::string& definition, int defaultResponse = -1) {
        try {
            const bool isValid = this->SetLegend(count, definition.c_str(), defaultResponse) != 0;
            return isValid ? Verdict::Valid : Verdict::Invalid;
        } catch (const CInvalidArgException&) {
            return Verdict::NoSuchItem;
        }
    }
};

TEST(ItemListDefinitions, Table) {
    const std::string longest(80, 'x');
    struct {
        std::string text;
        bool isValid;
        ResponseGrammar::Responses responses;
    } const cases[] = {
        {"", true, {}},
        {cYesNo, true, {{"Yes", "Yy", 1}, {"No", "Nn", 2}}},
        {"[T|Tt][F|Ff]", true, {{"T", "Tt", 0}, {"F", "Ff", 1}}},
        {"[a][b||7][c|k|]", true, {{"a", "", 0}, {"b", "", 7}, {"c", "k", 2}}},
        {"[]", true, {{"", "", 0}}},
        {"[a[b|[|65537]", true, {{"a[b", "[", 1}}},
        {"[" + longest + "|" + longest + "|" + std::string(79, '0') + "5]",
         true,
         {{longest, longest, 5}}},
        {"[x" + longest + "]", false, {}},
        {"[a|x" + longest + "]", false, {}},
        {"[a|b|0" + std::string(80, '0') + "]", false, {}},
        {"[A|a][B", false, {}},
        {"[A|a", false, {}},
        {"[A|a|1", false, {}},
        {"[A|a|1x]", false, {}},
        {"[A|a|-1]", false, {}},
        {"[A|a|1|2]", false, {}},
        {"[A] [B]", false, {}},
        {"A", false, {}},
        {"[A]]", false, {}},
    };
    for (const auto& c : cases) {
        Opened<ItemListCtl> list(3, c.text.c_str(), -1);
        EXPECT_EQ(list.GetItemCount(), c.isValid ? 3 : 0) << c.text;
        EXPECT_EQ(list.GetCurrItemIdx(), c.isValid ? 0 : -1) << c.text;
        if (c.isValid) {
            EXPECT_EQ(list.Of(2), c.responses) << c.text;
        }
    }
}

TEST(ItemListDefinitions, SetsOfItems) {
    struct {
        const char* text;
        Verdict verdict;
        std::string sets;  // of the six items: the first caption, or - for none
    } const cases[] = {
        {"[T][F]:0-2,5;[1][2][3]:3,4", Verdict::Valid, "TTT11T"},
        {"[T]:0-5;[F]:2", Verdict::Valid, "TTFTTT"},
        {"[T]:4-1", Verdict::Valid, "------"},
        {"[T]:0", Verdict::Valid, "T-----"},
        {"", Verdict::Valid, "------"},
        {"[T]", Verdict::Invalid, ""},
        {"[T]:", Verdict::Invalid, ""},
        {"[T]:1,", Verdict::Invalid, ""},
        {"[T]:1-", Verdict::Invalid, ""},
        {"[T]:1;", Verdict::Invalid, ""},
        {"[T]:1;:2", Verdict::Invalid, ""},
        {"[T]:1 ", Verdict::Invalid, ""},
        {":1", Verdict::Invalid, ""},
        {"[T]:6", Verdict::NoSuchItem, ""},
        {"[T]:0-6", Verdict::NoSuchItem, ""},
        {"[T]:99999999999", Verdict::NoSuchItem, ""},
    };
    for (const auto& c : cases) {
        Opened<ItemListCtl2> list(2, "[x]:1", 0);
        EXPECT_EQ(list.Read(6, c.text), c.verdict) << c.text;
        std::string sets;
        for (int i = 0; i < list.GetItemCount(); ++i) {
            sets += list.Of(i).empty() ? "-" : list.Of(i)[0].caption;
        }
        EXPECT_EQ(sets, c.sets) << c.text;
    }
}

TEST(ItemListDefinitions, AnyTextIsReadAsTheSecondReaderDoes) {
    Dice dice(610);
    const std::vector<std::string> pieces = {"[",  "]",   "|",      "Yes",   "[Yes|Yy|1]", "[No|n]",
                                             ":",  ";",   ":0-3",   ",",     "-",          "7",
                                             "12", "3,4", "[A||9]", "65536", ":1;[B]"};
    int valid = 0;
    for (int round = 0; round < 20'000; ++round) {
        std::string text = dice.OneIn(2) ? "[Yes|Yy|1]" : "";
        for (std::size_t left = dice.Below(8); left > 0; --left) text += dice.Pick(pieces);
        Opened<ItemListCtl> one(0, "", -1);
        Opened<ItemListCtl2> several(0, "", -1);
        const auto first = ResponseGrammar::OfOne(text, 1);
        const auto second = ResponseGrammar::OfSeveral(text, 10);
        ASSERT_EQ(one.Read(1, text), first.verdict) << text;
        ASSERT_EQ(several.Read(10, text), second.verdict) << text;
        valid += second.verdict == Verdict::Valid;
        for (int i = 0; i < several.GetItemCount(); ++i) {
            ASSERT_EQ(several.Of(i), second.items[static_cast<std::size_t>(i)]) << text;
        }
        if (one.GetItemCount() != 0) {
            ASSERT_EQ(one.Of(0), first.items[0]) << text;
        }
    }
    EXPECT_GT(valid, 500);
}

TEST(ItemListCtl, DefaultResponses) {
    struct {
        const char* definition;
        int defaultResponse;
        int valid;
        std::uint16_t first;
    } const cases[] = {{cYesNo, -1, 1, cNone}, {cYesNo, 0, 1, 1},  {cYesNo, 1, 1, 2},
                       {cYesNo, 2, 0, 0},      {"", -1, 1, cNone}, {"", 0, 0, 0}};
    for (const auto& c : cases) {
        ItemListCtl list(2, cYesNo, 0);
        EXPECT_EQ(list.SetLegend(4, c.definition, c.defaultResponse), c.valid);
        EXPECT_EQ(list.GetItemCount(), c.valid != 0 ? 4 : 0);
        if (c.valid != 0) {
            EXPECT_EQ(list.GetItem(0), c.first);
        }
        if (c.valid != 0) {
            EXPECT_EQ(list.GetAnsweredCount(), c.first != cNone ? 4 : 0);
        }
    }
    ItemListCtl2 sets(6, "[a||5][b]:0-1;[c||7][d||8][e]:3", 1);
    EXPECT_EQ(sets.GetItem(0), 1);
    EXPECT_EQ(sets.GetItem(3), 8);
    EXPECT_EQ(sets.GetItem(2), cNone);
    EXPECT_EQ(sets.SetLegend(6, "[a]:0;[c][d]:3", 1), 0) << "the first set has no second response";
    EXPECT_EQ(sets.SetLegend(6, "", 0), 0);

    ItemListCtl kept(2, cYesNo, 0);
    EXPECT_EQ(kept.SetLegend(-1, cYesNo, 0), 0);
    EXPECT_EQ(kept.SetLegend(3, nullptr, 0), 0);
    EXPECT_EQ(kept.GetItem(1), 1) << "it stays as it was";
    for (const int index : {-1, 2}) {
        EXPECT_THROW(kept.GetItem(index), CInvalidArgException);
        EXPECT_THROW(kept.SetItem(index, 1), CInvalidArgException);
    }
}

class ItemListCtlTest : public testing::Test {
protected:
    ItemListCtlTest() : m_list(std::make_unique<ItemListCtl>(10, cYesNo, -1)) {
        m_list->Create(CRect(0, 0, 400, 100), 5, &m_host);
        m_list->SetFocus();
        m_host.Take();
    }
    void key(std::string_view keys) {
        for (const char ch : keys) {
            ch == '\b' ? windows().PressKey(VK_BACK) : windows().Type({&ch, 1});
        }
    }

    ListHost m_host;
    std::unique_ptr<ItemListCtl> m_list;
};

TEST_F(ItemListCtlTest, KeysAnswerAndGoOn) {
    struct {
        const char* keys;
        Log log;
    } const cases[] = {
        {"y", {"1 0 1", "2 1 0"}},
        {"Nx?", {"1 1 2", "2 2 0"}},
        {"\b", {"1 1 65535", "2 1 0"}},
        {"\b\b", {"1 0 65535", "2 0 0"}},
    };
    for (const auto& c : cases) {
        key(c.keys);
        EXPECT_EQ(m_host.Take(), c.log) << c.keys;
    }
    windows().PressKey(VK_END);
    windows().Type("nn");
    EXPECT_EQ(m_host.Take(), (Log{"2 9 0", "1 9 2"})) << "it stays on the last item";
    m_list->SetItem(0, 1);
    windows().PressKey(VK_HOME);
    windows().Type("y");
    EXPECT_EQ(m_host.Take(), (Log{"2 0 0", "2 1 0"})) << "the same answer goes on silently";
    tessalink::keyPressed(*m_list, 'N', "n", 1, true);
    EXPECT_EQ(m_host.Take(), Log{}) << "a key that is held down counts once";
    m_list->UseBells(1);
    windows().PressKey(VK_END);
    windows().Type("?n");
    EXPECT_EQ(m_host.Take(), (Log{"2 9 0", "bell", "bell"})) << "a stray key, and the end";
    m_list->UseBells(0);
    windows().PressKey(VK_HOME);
    windows().PressKey(VK_DOWN);
    m_host.Take();
    EXPECT_EQ(m_list->SetReadOnly(1), 0);
    windows().Type("n\b");
    EXPECT_EQ(m_list->SetReadOnly(0), 1);
    m_host.other.SetFocus();
    m_list->SetFocus();
    EXPECT_EQ(m_host.Take(), (Log{"-8 -1 0", "-7 1 0"}));
    EXPECT_EQ(m_list->OnGetDlgCode(), UINT{DLGC_WANTARROWS | DLGC_WANTCHARS});
}

TEST_F(ItemListCtlTest, CountsFollowKeysAndTheProgram) {
    m_list->ReportCounts(1);
    windows().Type("y");
    m_list->SetItem(0, 2);
    m_list->SetItem(5, 7);
    m_list->Undo();
    m_list->SetLegend(3, cYesNo, 0);
    m_list->Clear();
    EXPECT_EQ(m_host.Take(), (Log{"3 0/10/10", "1 0 1", "3 1/9/10", "2 1 0", "3 2/8/10",
                                  "1 0 65535", "3 1/9/10", "2 0 0", "3 3/0/3", "3 0/0/0"}));
}

TEST_F(ItemListCtlTest, TheSecondPassStopsAtDifferences) {
    windows().Type("ynyn");
    tessalink::DoubleKeying keying;
    m_list->BeginVerification(keying);
    EXPECT_EQ(m_list->Undo(), 0);
    m_host.Take();
    struct {
        const char* keys;
        Log log;
        const char* spoken;  // of the current item
    } const cases[] = {
        {"y", {"5 0 1", "2 1 0"}, ""},
        {"y", {"bell", "4 1 1"}, "First No, now Yes"},
        {"ynx", {"bell", "bell", "bell"}, "First No, now Yes"},  // keyed on without listening
        {"\bn", {"5 1 2", "2 2 0"}, ""},
        {"n", {"bell", "4 2 2"}, "First Yes, now No"},
        {"\bn", {"1 2 2", "5 2 2", "2 3 0"}, ""},
    };
    for (const auto& c : cases) {
        key(c.keys);
        EXPECT_EQ(m_host.Take(), c.log);
        EXPECT_STREQ(m_list->AccessibleChild(m_list->GetCurrItemIdx()).value, c.spoken);
    }
    EXPECT_EQ(keying.CorrectionCount(), 1);
    EXPECT_EQ(keying.SettledCount(), 3);
    EXPECT_STREQ(m_list->AccessibleChild(2).value, "No");
    // The first press of a double click keys once, the second one not at all.
    CRect caption = m_list->GetItemRect(3);
    CPoint point(caption.left + caption.Width() / 2, caption.CenterPoint().y);
    m_list->SendMessage(WM_LBUTTONDOWN, 0, MAKELPARAM(point.x, point.y));
    m_list->SendMessage(WM_LBUTTONDBLCLK, 0, MAKELPARAM(point.x, point.y));
    EXPECT_EQ(m_host.Take(), (Log{"bell", "4 3 1"}));
    m_list->EndVerification();
    windows().PressKey(VK_BACK);
    EXPECT_EQ(m_host.Take(), Log{}) << "nothing to take back";
}

TEST_F(ItemListCtlTest, ANotificationMayDestroyDeleteOrReplaceTheList) {
    const std::vector<std::function<void()>> deeds = {
        [&] { m_list->DestroyWindow(); },
        [&] { m_list.reset(); },
        [&] { m_list->SetLegend(10, "[only|y]", -1); },
        [&] { m_list->SetLegend(0, "", -1); },
    };
    tessalink::DoubleKeying keying;
    const auto run = [&](std::size_t deed, int code, bool clicks) {
        m_list = std::make_unique<ItemListCtl>(10, cYesNo, -1);
        m_list->Create(CRect(0, 0, 400, 100), 5, &m_host);
        m_list->ReportCounts(1);
        if (code == 4) m_list->BeginVerification(keying);
        bool done = false;
        m_host.whenTold = [&](int told) {
            if (told == code && !std::exchange(done, true)) deeds[deed]();
        };
        CPoint point = m_list->GetItemRect(9).TopLeft();
        point.x = m_list->GetItemRect(9).right - 10;
        const std::function<void()> steps[] = {
            [&] { clicks ? windows().Click(point + CSize(0, 5)) : windows().Type("y"); },
            [&] { m_list->Undo(); },
            [&] { m_host.other.SetFocus(); },
        };
        if (!clicks) m_list->SetFocus();
        for (const auto& step : steps) {
            if (!done) step();
        }
        windows().Pump();
        m_host.whenTold = nullptr;
        EXPECT_TRUE(done) << deed << " " << code << clicks;
        if (deed == 2) {
            EXPECT_EQ(m_list->GetCurrItemIdx(), 0) << code << clicks;
        }
        m_host.other.SetFocus();
    };
    m_host.other.SetFocus();
    for (std::size_t deed = 0; deed < deeds.size(); ++deed) {
        for (const int code : {1, 2, 3, 4, NM_SETFOCUS, NM_KILLFOCUS}) {
            for (const bool clicks : {false, true}) run(deed, code, clicks);
        }
    }
}

TEST_F(ItemListCtlTest, PaintsOnlyWhatHasChanged) {
    windows().Pump();
    const auto before = windows().PaintedArea();
    windows().Type("y");
    windows().Pump();
    const CRect cell = m_list->GetItemRect(0);
    EXPECT_LE(windows().PaintedArea() - before, std::int64_t{2} * cell.Width() * cell.Height());
}

TEST_F(ItemListCtlTest, CirclesAnswersAndMarksTheCurrentItem) {
    const auto count = [&](auto kind) {
        tessalink::RecordingDevice device;
        windows().PaintAll(*m_list, device);
        const auto& all = device.Primitives();
        return std::count_if(all.begin(), all.end(), kind);
    };
    const auto isEllipse = [](const auto& p) { return p.kind == decltype(p.kind)::Ellipse; };
    EXPECT_EQ(count(isEllipse), 0);
    windows().Type("yn");
    EXPECT_EQ(count(isEllipse), 2);
    tessalink::DoubleKeying keying;
    m_list->BeginVerification(keying);
    EXPECT_EQ(count(isEllipse), 0) << "answers are hidden";
    const auto isBox = [](const auto& p) { return p.kind == decltype(p.kind)::Rectangle; };
    const auto boxes = count(isBox);
    windows().Type("n");
    EXPECT_EQ(count(isEllipse), 1) << "the first answer of the first item";
    EXPECT_EQ(count(isBox), boxes + 1) << "and the second one";
}

}  // namespace

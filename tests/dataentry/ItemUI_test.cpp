#include <gtest/gtest.h>

#include <memory>
#include <regex>

#include "core/Time.h"
#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/FloatEditCtl.h"
#include "dataentry/ImplDecIntegerDataEntryUI.h"
#include "dataentry/IntegerDataEntryUI.h"
#include "dataentry/RspListItemUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TimeDataEntryUI.h"
#include "dataentry/TimeEditCtl.h"
#include "platform/base/CInvalidArgException.h"
#include "platform/graphics/RecordingDevice.h"
#include "tests/support/Dice.h"
#include "tests/support/FormHost.h"
#include "tests/support/HeadlessWindows.h"
#include "tests/support/HostServicesScope.h"

using tessalink::LocaleValues;
using tessalink::test::Dice;
using tessalink::test::FormHost;
using tessalink::test::HostServicesScope;
using tessalink::test::windows;

namespace {

LocaleValues withDecimals(const char* separator) {
    LocaleValues values;
    values.decimalSeparator = separator;
    return values;
}

TEST(FloatEditCtl, TakesWhatAPatternTakes) {
    TextDataEntryUI ui;
    Dice dice(5);
    for (int round = 0; round < 3000; ++round) {
        const int decimals = static_cast<int>(dice.Below(4));
        const int negative = static_cast<int>(dice.Below(2));
        const std::string text = dice.Text(dice.Below(7), "0189.- \t,x");
        std::string pattern = "\\s*";
        if (negative != 0) pattern += "-?";
        pattern += "[0-9]*";
        if (decimals > 0) pattern += "(\\.[0-9]{0," + std::to_string(decimals) + "})?";
        const bool expected = std::regex_match(text, std::regex(pattern + "\\s*"));
        EXPECT_EQ(FloatEditCtl(ui, decimals, negative).IsValid(text.c_str()), expected) << text;
    }
}

TEST(TimeEditCtl, OverwritesPlaceByPlace) {
    LocaleValues twelveHours;
    twelveHours.is24Hour = false;
    twelveHours.morningIndicator = "AM";
    twelveHours.afternoonIndicator = "PM";
    struct {
        bool is24Hour;
        int shortFormat;
        const char* keys;
        const char* text;
        const char* refused;
    } const cases[] = {
        {true, 1, "1405", "14:05", ""},      {true, 1, "14:05", "14:05", ""},
        {true, 0, "7:", "7_:__:__", ""},     {true, 1, "1x4a5", "14:5_", "xa"},
        {true, 1, "12345", "12:34", "5"},    {true, 1, "1 2", "1_:2_", ""},
        {true, 1, "905", "9_:__", "05"},     {true, 0, "24605:78", "20:5_:7_", "468"},
        {false, 1, "0230p", "02:30 PM", ""}, {false, 1, "a0115", "01:15 AM", ""},
        {false, 1, "0115pa", "01:15 AM", ""}};
    for (const auto& c : cases) {
        const HostServicesScope scope(c.is24Hour ? LocaleValues{} : twelveHours);
        TextDataEntryUI ui;
        const TimeEditCtl edit(ui, c.shortFormat);
        CString text = Time::GetBlankFormatStr(c.shortFormat);
        int caret = 0;
        std::string refused;
        for (const char* key = c.keys; *key != '\0'; ++key) {
            if (!edit.Key(*key, text, caret)) refused += *key;
        }
        EXPECT_STREQ(text, c.text) << c.keys;
        EXPECT_EQ(refused, c.refused) << c.keys;
    }
}

// One item, keyed in a form.
class Keyed {
public:
    Keyed(DataEntryItem* item, DataEntryItemUI* ui) : m_form(new SingleColLayoutMgr), m_item(item) {
        m_form.AddItem(item, ui);
        m_form.Create(CRect(0, 0, 500, 300), 1, &m_host);
        m_form.SetFocus();
        m_host.notes.clear();
    }
    // Replaces the text and presses Return.
    void Enter(const char* text) {
        CWnd* box = CWnd::GetFocus();
        static_cast<CEdit*>(box)->SetSel(0, -1);
        if (*text == '\0') windows().PressKey(VK_DELETE);
        windows().Type(text);
        windows().PressKey(VK_RETURN);
    }
    CString Box() const {
        CString text;
        CWnd::GetFocus()->GetWindowText(text);
        return text;
    }
    FormHost& Host() { return m_host; }
    DataEntryCtl& Form() { return m_form; }
    template <class Item>
    Item& As() {
        return static_cast<Item&>(*m_item);
    }

private:
    FormHost m_host;
    DataEntryCtl m_form;
    DataEntryItem* m_item;
};

TEST(ItemUI, WholeNumbersAndImpliedDecimals) {
    struct {
        int decimals;
        const char* keyed;
        int stored;
        const char* shown;
    } const cases[] = {{0, "007", 7, "7"},
                       {0, "-12", -12, "-12"},
                       {2, "12.34", 1234, "12.34"},
                       {2, "12", 1200, "12.00"},
                       {2, "12.", 1200, "12.00"},
                       {2, "-.13", -13, "-0.13"},
                       {1, ".05", 0, "0.0"},
                       {1, ".15", 1, "0.1"},
                       {3, "9999999", 2147483647, "2147483.647"},
                       {0, "99999999999", 2147483647, "2147483647"}};
    for (const auto& c : cases) {
        Keyed keyed(new IntegerDataEntryItem("n"),
                    new ImplDecIntegerDataEntryUI(0, 12, c.decimals, 1));
        keyed.Enter(c.keyed);
        EXPECT_EQ(keyed.As<IntegerDataEntryItem>().GetValue(), c.stored) << c.keyed;
        EXPECT_STREQ(keyed.Box(), c.shown) << c.keyed;
    }
    // Halves are rounded away from zero; two decimals can't key one, a stored text can.
    struct Exposed : ImplDecIntegerDataEntryUI {
        using ImplDecIntegerDataEntryUI::ImplDecIntegerDataEntryUI;
        using TextDataEntryUI::set_item_text_value;
    } ui(0, 9, 2, 1);
    IntegerDataEntryItem item;
    ui.set_item_text_value("-0.125", &item);
    EXPECT_EQ(item.GetValue(), -13);
    ui.set_item_text_value(" 0.125 ", &item);
    EXPECT_EQ(item.GetValue(), 13);
    ui.set_item_text_value("  ", &item);
    EXPECT_EQ(item.IsNull(), 1);
}

TEST(ItemUI, InALocaleWithACommaTheBoxHasOne) {
    const HostServicesScope scope(withDecimals(","));
    Keyed keyed(new FloatDataEntryItem("x"), new FloatDataEntryUI(0, 6, 2, 0));
    keyed.Enter("1.2,5");  // the full stop is refused
    EXPECT_EQ(keyed.As<FloatDataEntryItem>().GetValue(), 12.5);
    EXPECT_STREQ(keyed.Box(), "12,50");
}

TEST(ItemUI, TimesAreStoredAsDigits) {
    for (const int shortFormat : {0, 1}) {
        Keyed keyed(new IntegerDataEntryItem("t"), new TimeDataEntryUI(0, shortFormat));
        const auto& item = keyed.As<IntegerDataEntryItem>();
        EXPECT_STREQ(keyed.Box(), shortFormat != 0 ? "__:__" : "__:__:__");
        keyed.Enter(shortFormat != 0 ? "1405" : "140509");
        EXPECT_EQ(item.GetValue(), shortFormat != 0 ? 1405 : 140509);
        keyed.Enter("99");
        EXPECT_EQ(item.IsNull(), 1);
        keyed.Enter("0000");
        EXPECT_EQ(item.IsNull(), 0) << "a separator without a number after it is a time";
        static_cast<CEdit*>(CWnd::GetFocus())->SetSel(0, 4);
        CWnd::GetFocus()->SendMessage(WM_CUT);
        EXPECT_STREQ(keyed.Box(), shortFormat != 0 ? "__:_0" : "__:_0:00");
        CString cut;
        EXPECT_TRUE(tessalink::clipboardText(cut) && cut == "00:0");
        keyed.Form().SetReadOnlyItem(0, 1);
        const CString kept = keyed.Box();
        windows().Type("1");
        windows().PressKey(VK_DELETE);
        windows().PressKey(VK_BACK);
        EXPECT_EQ(keyed.Box(), kept);
        keyed.Form().SetReadOnlyItem(0, 0);
        windows().SetClipboard("");
        windows().HoldKey(VK_SHIFT, true);
        windows().PressKey(VK_DELETE);
        windows().HoldKey(VK_SHIFT, false);
        EXPECT_STREQ(keyed.Box(), shortFormat != 0 ? "__:__" : "__:__:__");
        EXPECT_TRUE(tessalink::clipboardText(cut) && cut == kept);
    }
}

TEST(ItemUI, ACommitAsksTellsAndShowsTheItemsOwnText) {
    using Note = FormHost::Note;
    Keyed keyed(new IntegerDataEntryItem(5, "n"), new IntegerDataEntryUI(0, 4));
    auto& item = keyed.As<IntegerDataEntryItem>();
    keyed.Enter("007");
    EXPECT_EQ(keyed.Host().Taken(), (std::vector<Note>{{1, 0}, {2, 0}, {6, 0}}));
    EXPECT_STREQ(keyed.Box(), "7");
    keyed.Enter("7");
    EXPECT_EQ(keyed.Host().Taken(), (std::vector<Note>{{6, 0}})) << "the same text is no change";
    keyed.Enter("");
    EXPECT_EQ(item.IsNull(), 1);
    keyed.Host().notes.clear();

    // The parent sees the new value and refuses: everything is as before.
    int seen = 0;
    keyed.Host().answer = [&](const DATAENTRYCTL_NOTIFICATION& told) -> LRESULT {
        if (told.hdr.code != DATAENTRY_CHANGING) return 0;
        seen = static_cast<IntegerDataEntryItem*>(told.item)->GetValue();
        return 1;
    };
    keyed.Enter("42");
    EXPECT_EQ(seen, 42);
    EXPECT_EQ(item.IsNull(), 1);
    EXPECT_EQ(item.GetValue(), 0);
    EXPECT_STREQ(keyed.Box(), "");
    EXPECT_EQ(keyed.Host().Taken(), (std::vector<Note>{{1, 0}, {4, 0}}));

    // Escape drops what was typed.
    keyed.Host().answer = nullptr;
    windows().Type("3");
    windows().PressKey(VK_ESCAPE);
    EXPECT_STREQ(keyed.Box(), "");
    EXPECT_TRUE(keyed.Host().Taken().empty());
}

TEST(ItemUI, ARefusedChangeKeepsEveryDigit) {
    Keyed keyed(new FloatDataEntryItem("x"), new FloatDataEntryUI(0, 9, 1, 0));
    auto& item = keyed.As<FloatDataEntryItem>();
    item.SetValue(1.23456789);
    keyed.Form().OnDataChanged(0);
    keyed.Host().answer = [](const DATAENTRYCTL_NOTIFICATION& told) -> LRESULT {
        return told.hdr.code == DATAENTRY_CHANGING;
    };
    keyed.Enter("7.5");
    EXPECT_EQ(item.GetValue(), 1.23456789);
    item.SetNull(1);
    keyed.Form().OnDataChanged(0);
    keyed.Enter("7.5");
    EXPECT_EQ(item.GetValue(), 1.23456789) << "a number that is null keeps its last one";
    EXPECT_EQ(item.IsNull(), 1);
}

TEST(ItemUI, PastesAreRefusedWhole) {
    int beeps = 0;
    tessalink::HostServices services;
    services.beep = [&](UINT) { ++beeps; };
    const HostServicesScope scope(services);
    struct {
        const char* clipboard;
        const char* box;
    } const cases[] = {{"12x", ""}, {"1.5", "1.5"}, {"1.555", ""}, {"-1", ""}, {" 2", " 2"}};
    for (const auto& c : cases) {
        Keyed keyed(new FloatDataEntryItem("x"), new FloatDataEntryUI(0, 6, 2, 0));
        beeps = 0;
        windows().SetClipboard(c.clipboard);
        CWnd::GetFocus()->SendMessage(WM_PASTE);
        EXPECT_STREQ(keyed.Box(), c.box) << c.clipboard;
        EXPECT_EQ(beeps, *c.box == '\0' ? 1 : 0) << c.clipboard;
    }
}

// What the keys could not have made may be taken away by them.
TEST(ItemUI, ABoxIsShortenedWhateverItHas) {
    auto* number = new FloatDataEntryItem("x");
    number->SetValue(12345.678);
    struct {
        DataEntryItem* item;
        DataEntryItemUI* ui;
        const char* box;
    } const cases[] = {
        {new IntegerDataEntryItem(-5, "n"), new IntegerDataEntryUI(0, 4), "-"},
        {number, new FloatDataEntryUI(0, 6, 3, 0), "12345.67"},
        {new TextDataEntryItem("abcde"), new TextDataEntryUI(0, 3), "abcd"},
    };
    for (const auto& c : cases) {
        Keyed keyed(c.item, c.ui);
        windows().PressKey(VK_END);
        windows().PressKey(VK_BACK);
        EXPECT_STREQ(keyed.Box(), c.box);
    }
}

// The values that a form with one item twice, of which none is current, draws.
std::vector<std::string> drawnBy(DataEntryItemUI* ui, const std::function<DataEntryItem*()>& make) {
    FormHost host;
    DataEntryCtl form(new SingleColLayoutMgr);
    for (int i = 0; i < 2; ++i) form.AddItem(make(), ui);
    form.Create(CRect(0, 0, 500, 300), 1, &host);
    tessalink::RecordingDevice device;
    windows().PaintAll(form, device);
    std::vector<std::string> drawn;
    for (const auto& primitive : device.Primitives()) {
        const bool isValue = primitive.kind == tessalink::Primitive::Kind::Text &&
                             !primitive.text.empty() && primitive.text != "t";
        if (isValue) drawn.push_back(primitive.text);
    }
    return drawn;
}

TEST(ItemUI, ATextIsDrawnInTheLinesThatItsBoxHasAndAMarkWhereMoreFollows) {
    struct {
        int lines;
        const char* text;
        std::vector<std::string> drawn;
    } const cases[] = {{0, "one\r\ntwo", {"one two"}},
                       {1, "one\r\ntwo", {"one two"}},
                       {3, "one\r\ntwo", {"one", "two"}},
                       {2, "one\r\ntwo\r\nthree", {"one", "two\x85"}},
                       {1, "MMMMMMMMMMMMMMMM", {"MMMMMMMMM\x85"}}};
    for (const auto& c : cases) {
        auto drawn = c.drawn;
        drawn.insert(drawn.end(), c.drawn.begin(), c.drawn.end());
        EXPECT_EQ(drawnBy(new TextDataEntryUI(0, 0, c.lines, c.lines == 1 ? 10 : 0),
                          [&] { return new TextDataEntryItem(c.text, "t"); }),
                  drawn)
            << c.text << " in " << c.lines;
    }
}

// Interfaces as hosts write them.
struct DozensUI : IntegerDataEntryUI {
    CString get_curr_item_text_value() override {
        CString text;
        text.Format("%d dozen", static_cast<IntegerDataEntryItem*>(GetCurrItem())->GetValue() / 12);
        return text;
    }
};

struct PaintingUI : DataEntryItemUI {
    void OnMeasureItem(const DataEntryItem*, CDC*, CSize& size) override { size = CSize(90, 30); }
    void OnPaint() override {
        CPaintDC dc(this);
        CRect client;
        GetClientRect(&client);
        CString text;
        text.Format("%s %dx%d", GetCurrItem()->GetLabel().GetString(), client.Width(),
                    client.Height());
        dc.TextOut(0, 0, text);
    }
};

TEST(ItemUI, InterfacesOfAHostsOwnShowWhatTheyOverride) {
    EXPECT_EQ(drawnBy(new DozensUI, [] { return new IntegerDataEntryItem(36, "t"); }),
              (std::vector<std::string>{"3 dozen", "3 dozen"}));
    DozensUI ui;
    IntegerDataEntryItem item(24, "t");
    EXPECT_STREQ(ui.ValueText(&item), "2 dozen");
    int made = 0;
    EXPECT_EQ(
        drawnBy(new PaintingUI, [&] { return new IntegerDataEntryItem(made++ == 0 ? "a" : "b"); }),
        (std::vector<std::string>{"a 498x30", "b 498x30"}));
}

TEST(ItemUI, ControlReturnIsALineInALongText) {
    Keyed keyed(new TextDataEntryItem(nullptr, "t"), new TextDataEntryUI(0, 100, 3, 20));
    windows().Type("one");
    windows().HoldKey(VK_CONTROL, true);
    windows().PressKey(VK_RETURN);
    windows().HoldKey(VK_CONTROL, false);
    windows().Type("two");
    windows().PressKey(VK_RETURN);
    EXPECT_STREQ(keyed.As<TextDataEntryItem>().GetValue(), "one\r\ntwo");
}

// What an interface has understood of a response set.
template <class UI>
struct Parsed : UI {
    Parsed(const char* set) : UI(set, 0) {}
    void draw_choice(CDC&, const typename UI::Choice&, const CRect&, bool, bool) const override {}
    std::string Text() const {
        std::string text;
        for (const auto& choice : this->m_choices) {
            text += std::string(choice.caption.GetString()) + "/" + choice.keys.GetString() + "/" +
                    std::to_string(choice.value) + "/" + std::to_string(choice.group) + " ";
        }
        return text;
    }
};

TEST(ItemUI, ResponseSets) {
    const std::string long80(80, 'x');
    struct {
        std::string set;
        const char* bits;
        const char* codes;
    } const cases[] = {{"[Yes|Yy|1][No|Nn|0]", "Yes/Yy/1/0 No/Nn/0/0 ", "Yes/Yy/1/0 No/Nn/0/0 "},
                       {"[A|a][B|b][C|c]", "A/a/1/0 B/b/2/0 C/c/4/0 ", "A/a/0/0 B/b/1/0 C/c/2/0 "},
                       {"[A][][B|b|]", "A//1/0 B/b/2/1 ", "A//0/0 B/b/1/1 "},
                       {"x[A]", "", ""},
                       {"", "", ""},
                       {"[A|a][B|b|x][C]", "A/a/1/0 ", "A/a/0/0 "},
                       {"[A|a][B", "A/a/1/0 ", "A/a/0/0 "},
                       {"[" + long80 + "x]", "", ""},
                       {"[A|a|1|2]", "", ""},
                       {"[A]rest[B]", "A//1/0 ", "A//0/0 "}};
    for (const auto& c : cases) {
        EXPECT_EQ(Parsed<CheckBoxItemUI>(c.set.c_str()).Text(), c.bits) << c.set;
        EXPECT_EQ(Parsed<RadioBtnItemUI>(c.set.c_str()).Text(), c.codes) << c.set;
    }
    EXPECT_EQ(Parsed<CheckBoxItemUI>(("[" + long80 + "]").c_str()).Text().substr(80), "//1/0 ");
}

TEST(ItemUI, ChoosingByKeys) {
    using Note = FormHost::Note;
    {
        Keyed keyed(new IntegerDataEntryItem("c"), new CheckBoxItemUI("[A|a][B|b][C|cC]", 0));
        auto& item = keyed.As<IntegerDataEntryItem>();
        windows().Type("aC");
        EXPECT_EQ(item.GetValue(), 5);
        windows().Type("ac");
        EXPECT_EQ(item.IsNull(), 1) << "choosing twice takes back";
        EXPECT_EQ(keyed.Host().Taken().size(), 8U);
        windows().Type("A");
        EXPECT_TRUE(keyed.Host().Taken().empty()) << "case counts";
        keyed.Form().SetReadOnlyItem(0, 1);
        windows().Type("a");
        EXPECT_EQ(item.IsNull(), 1);
    }
    Keyed keyed(new IntegerDataEntryItem("r"), new RadioBtnItemUI("[Yes|y|1][No|n|0]", 0));
    auto& item = keyed.As<IntegerDataEntryItem>();
    windows().Type("y");
    EXPECT_EQ(keyed.Host().Taken(), (std::vector<Note>{{1, 0}, {2, 0}, {6, 0}}));
    windows().Type("y");
    EXPECT_EQ(keyed.Host().Taken(), (std::vector<Note>{{6, 0}})) << "nobody is asked";
    windows().Type("n");
    EXPECT_EQ(item.GetValue(), 0) << "a code of 0 replaces another";
    keyed.Host().answer = [](const DATAENTRYCTL_NOTIFICATION&) -> LRESULT { return 1; };
    windows().Type("y");
    EXPECT_EQ(item.GetValue(), 0);
    // Ctrl and an arrow lead to a response, the blank chooses it.
    keyed.Host().answer = nullptr;
    windows().HoldKey(VK_CONTROL, true);
    windows().PressKey(VK_RIGHT);
    windows().HoldKey(VK_CONTROL, false);
    windows().Type(" ");
    EXPECT_EQ(item.GetValue(), 1);
}

TEST(ItemUI, ColoursAreDarkenedPercentByPercent) {
    struct {
        BYTE channel;
        int percent;
        BYTE adjusted;
    } const cases[] = {{0, 120, 0},     {255, 120, 255}, {128, 120, 102},
                       {128, 100, 128}, {128, 50, 191},  {10, 300, 0}};
    for (const auto& c : cases) {
        EXPECT_EQ(GetGValue(DataEntryItemUI::AdjustColor(RGB(0, c.channel, 0), c.percent)),
                  c.adjusted);
    }
}

}  // namespace

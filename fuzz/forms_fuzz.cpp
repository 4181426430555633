// Any text as a response set, as what is keyed into a number, and as what is keyed into a time:
// response sets are read as a second reader reads them, number boxes hold only what their pattern
// takes, time boxes keep their form, and every item can be painted.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "core/Time.h"
#include "dataentry/CheckBoxItemUI.h"
#include "dataentry/DataEntryCtl.h"
#include "dataentry/FloatDataEntryUI.h"
#include "dataentry/SingleColLayoutMgr.h"
#include "dataentry/TimeDataEntryUI.h"
#include "dataentry/TimeEditCtl.h"
#include "fuzz/detail/require.h"
#include "platform/windows/CEdit.h"
#include "platform/windows/CFrameWnd.h"
#include "platform/windows/HeadlessSystem.h"

using tessalink::HeadlessSystem;
using tessalink::fuzz::require;

namespace {

constexpr std::size_t cMaxPart = 80;
constexpr std::size_t cTyped = 40;
constexpr int cDecimals = 2;
constexpr int cDigits = 9;

// How many responses come before the first fault, told one character at a time.
int countOfResponses(std::string_view text) {
    int count = 0;
    std::size_t i = 0;
    while (i < text.size() && text[i] == '[') {
        if (text.substr(i, 2) == "[]") {
            i += 2;
            continue;
        }
        std::size_t part = 0;
        std::size_t length = 0;
        for (++i; i < text.size() && text[i] != ']'; ++i) {
            if (text[i] == '|' && part < 2) {
                ++part;
                length = 0;
            } else if (++length > cMaxPart || (part == 2 && (text[i] < '0' || text[i] > '9'))) {
                return count;
            }
        }
        if (i++ == text.size()) return count;
        ++count;
    }
    return count;
}

struct Choices : CheckBoxItemUI {
    explicit Choices(const char* set) : CheckBoxItemUI(set, 0) {}
    int Count() const { return static_cast<int>(m_choices.size()); }
};

bool isNumber(std::string_view text) {
    std::size_t i = 0;
    const auto skip = [&](auto&& is) {
        const std::size_t start = i;
        while (i < text.size() && is(static_cast<unsigned char>(text[i]))) ++i;
        return i - start;
    };
    const auto isSpace = [](unsigned char c) { return std::isspace(c) != 0; };
    const auto isDigit = [](unsigned char c) { return c >= '0' && c <= '9'; };
    skip(isSpace);
    if (i < text.size() && text[i] == '-') ++i;
    skip(isDigit);
    if (i < text.size() && text[i] == '.') {
        ++i;
        if (skip(isDigit) > cDecimals) return false;
    }
    skip(isSpace);
    return i == text.size() && text.size() <= cDigits;
}

std::string boxText() {
    CString text;
    if (CWnd* focus = CWnd::GetFocus()) focus->GetWindowText(text);
    return text.GetString();
}

// A form with one item, which has the focus.
class Form {
public:
    Form(DataEntryItem* item, DataEntryItemUI* ui) : m_form(new SingleColLayoutMgr) {
        m_host.Create("Host", CRect(0, 0, 400, 300));
        m_form.AddItem(item, ui);
        m_form.Create(CRect(0, 0, 400, 300), 1, &m_host);
        m_form.SetFocus();
    }
    ~Form() {
        HeadlessSystem::Default().PressKey(VK_RETURN);
        HeadlessSystem::Default().Pump();
        HeadlessSystem::Default().ToldEvents().clear();
    }

private:
    CFrameWnd m_host;
    DataEntryCtl m_form;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string text(reinterpret_cast<const char*>(data), size);
    text.resize(std::min(text.find('\0'), text.size()));  // response sets end at a NUL
    auto& system = HeadlessSystem::Default();
    const std::string typed = text.substr(0, cTyped);
    {
        auto* ui = new Choices(text.c_str());
        require(ui->Count() == countOfResponses(text), "the same responses");
        const Form form(new IntegerDataEntryItem, ui);
        system.Type(typed);
    }
    {
        const Form form(new FloatDataEntryItem(""), new FloatDataEntryUI(0, cDigits, cDecimals, 1));
        for (const char ch : typed) {
            system.Type(std::string_view(&ch, 1));
            require(isNumber(boxText()), "a number or the beginning of one");
        }
        system.SetClipboard(text.c_str());
        if (CWnd* focus = CWnd::GetFocus()) focus->SendMessage(WM_PASTE);
        require(isNumber(boxText()), "a number after pasting");
    }
    {
        const Form form(new IntegerDataEntryItem, new TimeDataEntryUI(0, 0));
        const std::size_t length = boxText().size();
        for (const char ch : typed) {
            system.Type(std::string_view(&ch, 1));
            const std::string box = boxText();
            require(box.size() == length && box[2] == ':' && box[5] == ':', "the form of a time");
        }
    }
    return 0;
}

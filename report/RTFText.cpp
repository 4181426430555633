#include "report/RTFText.h"

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/base/NumberText.h"
#include "report/detail/CharClasses.h"
#include "report/detail/RTFScaler.h"
#include "report/detail/TextSearch.h"

using tessalink::detail::isBlank;
using tessalink::detail::isDigit;

namespace {

/// Room that is made for escapes at first: one for so many characters.
constexpr std::size_t cExpectedTextPerEscape = 16;
constexpr int cDecimal = 10;
constexpr std::string_view cArgument = "%1";
/// Few characters can ask for very many: forty "%" before a "1" for a billion of "11%".
constexpr std::size_t cMaxInserted = std::size_t{64} << 20;

int addDigit(int value, char digit) {
    return tessalink::wrapAdd(tessalink::wrapMul(value, cDecimal), digit - '0');
}

CString loadString(unsigned int resourceId) {
    CString text;
    if (!text.LoadString(resourceId)) text.Empty();
    return text;
}

/// Whether replacing "%1" by the argument may go on without end. An argument without a "%1" makes
/// new ones with its neighbors, by its "1" at the start and its "%" at the end. They run out, as
/// each moves a "%" behind a "1", unless there are two of both.
bool isEndless(std::string_view argument) {
    return argument.find(cArgument) != std::string_view::npos ||
           (argument.starts_with("11") && argument.ends_with("%%"));
}

CString replaceOnce(std::string_view text, std::string_view filling) {
    std::string result;
    for (auto at = text.find(cArgument); at != std::string_view::npos; at = text.find(cArgument)) {
        result.append(text.substr(0, at)).append(filling);
        text.remove_prefix(at + cArgument.size());
    }
    return CString(std::move(result.append(text)));
}

/// Replaces also what the argument makes with its neighbors: the argument is read like the text.
/// Nothing when more than cMaxInserted characters would be put in.
std::optional<CString> replaceAll(std::string_view text, std::string_view filling) {
    std::string result;
    std::size_t inserted = 0;
    std::string ahead(text.rbegin(), text.rend());  // what is still to be read, backwards
    while (!ahead.empty()) {
        const char ch = ahead.back();
        ahead.pop_back();
        if (ch == cArgument.back() && result.ends_with(cArgument.front())) {
            if (filling.size() > cMaxInserted - inserted) return std::nullopt;
            inserted += filling.size();
            result.pop_back();
            ahead.append(filling.rbegin(), filling.rend());
        } else {
            result += ch;
        }
    }
    return CString(std::move(result));
}

}  // namespace

CString RTFEncode(const char* text) {
    const std::string_view plain = text ? std::string_view(text) : std::string_view();
    std::string encoded;
    encoded.reserve(plain.size() + plain.size() / cExpectedTextPerEscape);
    const char* p = plain.data();
    const char* const end = p + plain.size();
    for (;;) {
        const char* escape = tessalink::detail::findRtfSpecial(p, end);
        encoded.append(p, escape);
        if (escape == end) return CString(std::move(encoded));
        encoded += '\\';
        encoded += *escape;
        p = escape + 1;
    }
}

void SkipBlanks(const char* text, int& pos) {
    while (isBlank(text[pos])) ++pos;
}

int ParseInt(const char* text, int& pos, int& value) {
    value = 0;
    SkipBlanks(text, pos);
    const bool negative = text[pos] == '-';
    if (negative) SkipBlanks(text, ++pos);
    if (!isDigit(text[pos])) return 0;
    while (isDigit(text[pos])) value = addDigit(value, text[pos++]);
    SkipBlanks(text, pos);
    if (negative) value = tessalink::wrapNeg(value);
    return 1;
}

int ParseInt(const char* text, int first, int last, int& value) {
    int blank = 0;
    return ParseInt(text, first, last, value, blank) || blank;
}

int ParseInt(const char* text, int first, int last, int& value, int& isBlankField) {
    const auto ahead = [&](auto matches) {
        while (first <= last && text[first] != '\0' && matches(text[first])) ++first;
    };
    value = 0;
    ahead(isBlank);
    isBlankField = first > last;
    if (isBlankField) return 0;
    ahead([&](char ch) {
        if (!isDigit(ch)) return false;
        value = addDigit(value, ch);
        return true;
    });
    ahead(isBlank);
    return first > last;
}

void ScaleRTFText(double factor, CString& rtf) {
    rtf = tessalink::detail::RTFScaler(factor).Scale(rtf.View());
}

void PrefixStrings(unsigned int resourceId, CStringArray& strings) {
    const CString prefix = loadString(resourceId) + " ";
    for (int i = 0; i < strings.GetSize(); ++i) strings.SetAt(i, prefix + strings.GetAt(i));
}

void ReplaceTextA(CString& result, const CString& text, const char* argument) {
    const std::string_view filling = argument ? std::string_view(argument) : std::string_view();
    std::optional<CString> all;
    if (!isEndless(filling)) all = replaceAll(text.View(), filling);
    result = all ? *std::move(all) : replaceOnce(text.View(), filling);
}

void ReplaceTextA(CString& result, const CString& text, unsigned int resourceId) {
    ReplaceTextA(result, text, static_cast<const char*>(loadString(resourceId)));
}

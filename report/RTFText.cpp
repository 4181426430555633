#include "report/RTFText.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

#include "platform/base/NumberText.h"
#include "report/detail/CharTables.h"
#include "report/detail/RTFScaler.h"

using tessalink::detail::isBlank;
using tessalink::detail::isDigit;

namespace {

/// Room that is made for escapes at first: one for so many characters.
constexpr std::size_t cExpectedTextPerEscape = 16;
constexpr int cDecimal = 10;
constexpr std::string_view cArgument = "%1";

int addDigit(int value, char digit) {
    return tessalink::wrapAdd(tessalink::wrapMul(value, cDecimal), digit - '0');
}

CString loadString(unsigned int resourceId) {
    CString text;
    if (!text.LoadString(resourceId)) text.Empty();
    return text;
}

/// Whether replacing "%1" by the argument could go on without end.
bool makesArguments(std::string_view argument) {
    return argument.find(cArgument) != std::string_view::npos ||
           (argument.starts_with(cArgument.back()) && argument.ends_with(cArgument.front()));
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
    isBlankField = first > last || text[first] == '\0';
    if (isBlankField) return 0;
    ahead([&](char ch) {
        if (!isDigit(ch)) return false;
        value = addDigit(value, ch);
        return true;
    });
    ahead(isBlank);
    return first > last || text[first] == '\0';
}

void ScaleRTFText(double factor, CString& rtf) {
    rtf = tessalink::detail::RTFScaler(factor).Scale(rtf.View());
}

void PrefixStrings(unsigned int resourceId, CStringArray& strings) {
    const CString prefix = loadString(resourceId) + " ";
    for (int i = 0; i < strings.GetSize(); ++i) strings.SetAt(i, prefix + strings.GetAt(i));
}

void ReplaceTextA(CString& result, CString text, const char* argument) {
    const std::string_view filling = argument ? std::string_view(argument) : std::string_view();
    const bool once = makesArguments(filling);
    int from = 0;
    for (int at = text.Find("%1"); at >= 0; at = text.Find("%1", from)) {
        text = text.Left(at) + filling + text.Mid(at + static_cast<int>(cArgument.size()));
        // A new "%1" can only start with the character before the replaced one.
        from = once ? at + static_cast<int>(filling.size()) : std::max(at - 1, 0);
    }
    result = text;
}

void ReplaceTextA(CString& result, CString text, unsigned int resourceId) {
    ReplaceTextA(result, std::move(text), static_cast<const char*>(loadString(resourceId)));
}

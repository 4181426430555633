#include "platform/files/detail/SystemLocale.h"

#include <cstdlib>
#include <optional>
#include <string>

#include "platform/base/CodePage.h"
#include "platform/base/detail/CodePageInForce.h"
#include "platform/files/windows/WideText.h"

namespace tessalink::detail {

namespace {

// A value of the user's settings in UTF-8.
std::string setting(LCTYPE type) {
    constexpr int longest = 256;
    wchar_t text[longest];
    const int length = ::GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, type, text, longest);
    return length > 1 ? utf8Text({text, static_cast<std::size_t>(length - 1)}) : std::string();
}

// A number of one digit among them.
int numberSetting(LCTYPE type, int usual) {
    const std::string text = setting(type);
    return text.size() == 1 && text[0] >= '0' && text[0] <= '9' ? text[0] - '0' : usual;
}

// In the library's characters; nothing when they lack it or it is empty.
std::optional<CString> textSetting(LCTYPE type) {
    const std::string text = setting(type);
    const auto result = fromUtf8(text);
    if (text.empty() || !result.IsWhole()) return std::nullopt;
    return CString(std::string_view(result.text));
}

void set(CString& value, LCTYPE type) {
    if (const auto text = textSetting(type)) value = *text;
}

}  // namespace

LocaleValues systemLocale() {
    LocaleValues values;
    set(values.timeSeparator, LOCALE_STIME);
    values.is24Hour = numberSetting(LOCALE_ITIME, 1) == 1;
    if (!values.is24Hour) {
        values.indicatorInFront = numberSetting(LOCALE_ITIMEMARKPOSN, 0) == 1;
        values.morningIndicator = "AM";
        values.afternoonIndicator = "PM";
        const auto morning = textSetting(LOCALE_S1159);
        const auto afternoon = textSetting(LOCALE_S2359);
        if (morning && afternoon && *morning != *afternoon) {
            values.morningIndicator = *morning;
            values.afternoonIndicator = *afternoon;
        }
    }
    values.dateOrder = numberSetting(LOCALE_IDATE, monthDayYear);
    set(values.dateSeparator, LOCALE_SDATE);
    if (const auto decimals = textSetting(LOCALE_SDECIMAL);
        decimals && decimals->GetLength() == 1) {
        values.decimalSeparator = *decimals;
    }
    return values;
}

CodePage systemCodePage() {
    const std::string number = setting(LOCALE_IDEFAULTANSICODEPAGE);
    return codePageOf(std::atoi(number.c_str())).value_or(CodePage::Western);
}

CalendarTime systemTime() {
    SYSTEMTIME now{};
    ::GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

}  // namespace tessalink::detail

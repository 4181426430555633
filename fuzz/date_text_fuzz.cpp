// Any text as a date in any locale, and as US text: what is read is written with the fields where
// the locale has them, and where its separator allows, read again as the same date.
#include <cstdlib>

#include "core/Date.h"
#include "fuzz/detail/FuzzedBytes.h"
#include "fuzz/detail/require.h"

namespace {

using tessalink::fuzz::require;

bool isReadable() {
    const char separator = *Date::GetDateSep();
    return separator != '\0' && separator != ' ' && !tessalink::fuzz::isDigit(separator);
}

void checkField(const CString& text, int start, int width, int value) {
    require(std::atoi(text.Mid(start, width).GetString()) == value, "each field in its place");
}

void checkLocal(const Date& date, int order) {
    const CString text = date.GetAsLocalStr();
    const bool isKnown = order <= tessalink::yearMonthDay;
    require(text.IsEmpty() == !isKnown, "a text in a known order only");
    Date again;
    const int isDate = again.SetLocal(text.GetString());
    if (!isKnown || date.GetYear() > 9999) return;
    require(text.GetLength() == Date::GetLocalDateFormatLen(), "a text of the stated width");
    require(Date::GetLocalDateFormatMask().GetLength() == text.GetLength(), "as the mask");
    checkField(text, Date::GetYearStart(), 4, date.GetYear());
    checkField(text, Date::GetMonthStart(), 2, date.GetMonth());
    checkField(text, Date::GetDayStart(), 2, date.GetDay());
    if (isReadable()) require(isDate && again == date, "what was written is read again");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessalink::fuzz::FuzzedBytes bytes(data, size);
    tessalink::LocaleValues values;
    values.dateOrder = bytes.TakeByte() % 4;
    values.dateSeparator = bytes.TakeText(8);
    tessalink::CalendarTime now;
    now.year = 1900 + bytes.TakeByte() * 2;
    now.month = 1 + bytes.TakeByte() % 12;
    now.day = 1 + bytes.TakeByte() % 28;
    tessalink::fuzz::serve(values, now);
    const std::string text = bytes.Rest();
    require(Date::GetLocalDateFormat() == values.dateOrder, "the locale is that of the services");

    const Date before(2001, 3, 7);
    Date local = before;
    if (!local.SetLocal(text.c_str())) {
        require(local == before, "a text that is no date leaves the date as it was");
    }
    checkLocal(local, values.dateOrder);
    Date us = before;
    if (!us.SetUS(text.c_str())) {
        require(us == before, "a text that is no date leaves the date as it was");
    }
    require(Date(us.GetAsUSStr().GetString()) == us, "what was written is read again");

    int years, months, days;
    local.Minus(us, years, months, days);
    const int sign = us < local ? 1 : -1;
    require(sign * years >= 0 && sign * months >= 0 && sign * months < 12, "an age of one sign");
    require(sign * days >= 0 && sign * days <= 30, "of less than a month of days");
    return 0;
}

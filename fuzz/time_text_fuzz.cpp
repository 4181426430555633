// Any text as a time in any locale: what is read is written in the width of the locale, and where
// its separator and indicators allow, read again as the same time.
#include "core/Time.h"
#include "fuzz/detail/FuzzedBytes.h"
#include "fuzz/detail/require.h"

namespace {

using tessalink::fuzz::isLetter;
using tessalink::fuzz::require;

char lower(const char* text) {
    return static_cast<char>(*text | 0x20);
}

/// Whether the texts of this locale can be told apart beyond doubt.
bool isReadable() {
    const char separator = *Time::GetTimeSep();
    if (separator == '\0' || separator == ' ' || isLetter(separator) ||
        tessalink::fuzz::isDigit(separator)) {
        return false;
    }
    if (Time::TimeFormat::FORMAT_24HOUR) return true;
    const char* const morning = Time::TimeFormat::FORMAT_AM_STR;
    const char* const afternoon = Time::TimeFormat::FORMAT_PM_STR;
    return isLetter(*morning) && isLetter(*afternoon) && lower(morning) != lower(afternoon);
}

void check(const Time& time, int shortFormat) {
    const CString text = time.GetAsStr(shortFormat);
    require(text.GetLength() == Time::GetTimeFormatLen(shortFormat), "a text of the stated width");
    require(Time::GetBlankFormatStr(shortFormat).GetLength() == text.GetLength(), "as the pattern");
    Time again;
    const int isTime = again.Set(text.GetString());
    if (!isReadable()) return;
    require(isTime, "what was written is read");
    require(again == Time(time.GetHour(), time.GetMin(), shortFormat ? 0 : time.GetSec()),
            "as the same time");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tessalink::fuzz::FuzzedBytes bytes(data, size);
    tessalink::LocaleValues values;
    const int flags = bytes.TakeByte();
    values.is24Hour = flags & 1;
    values.indicatorInFront = flags & 2;
    values.timeSeparator = bytes.TakeText(7);
    values.morningIndicator = bytes.TakeText(12);
    values.afternoonIndicator = bytes.TakeText(12);
    tessalink::fuzz::serve(values, {});
    const std::string text = bytes.Rest();

    const Time before(1, 2, 3);
    Time time = before;
    if (!time.Set(text.c_str())) {
        require(time == before, "a text that is no time leaves the time as it was");
        time = Time(static_cast<std::uint32_t>(text.size() * 7919 % 240000));
        if (!time.IsValid()) return 0;
    }
    check(time, 0);
    check(time, 1);
    return 0;
}

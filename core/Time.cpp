#include "core/Time.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "core/detail/FieldReader.h"
#include "core/detail/FieldWriter.h"
#include "platform/base/HostServices.h"
#include "platform/files/CArchive.h"
#include "platform/files/Locale.h"

using tessalink::detail::FieldReader;
using tessalink::detail::FieldWriter;

IMPLEMENT_SERIAL(Time, CObject, 0)

// What stands here before the locale is read is what LocaleValues has by default.
constinit char Time::TimeFormat::FORMAT_TIME_SEP[] = ":";
constinit int Time::TimeFormat::FORMAT_TIME_SEP_LEN = 1;
constinit int Time::TimeFormat::FORMAT_24HOUR = 1;
constinit int Time::TimeFormat::FORMAT_POS_PREFIX = 0;
constinit char Time::TimeFormat::FORMAT_AM_STR[] = "";
constinit int Time::TimeFormat::FORMAT_AM_LEN = 0;
constinit char Time::TimeFormat::FORMAT_PM_STR[] = "";
constinit int Time::TimeFormat::FORMAT_PM_LEN = 0;
constinit int Time::TimeFormat::FORMAT_LEN = 8;
constinit int Time::TimeFormat::FORMAT_SHORT_LEN = 5;
Time::TimeFormat Time::m_time_format;

namespace {

using Format = Time::TimeFormat;

constexpr int cMinutesPerHour = 60;
constexpr int cSecondsPerMinute = 60;
constexpr int cHoursPerDay = 24;
constexpr unsigned long cLastTime = 235959;
constexpr int cNoonHour = 12;
constexpr int cFieldWidth = 2;

/// Copies the text up to its NUL, cut to what the record can hold; returns its length.
template <std::size_t SIZE>
int keep(char (&field)[SIZE], const char* text) {
    const std::size_t length = ::strnlen(text, SIZE - 1);
    std::fill(std::copy_n(text, length, field), field + SIZE, '\0');
    return static_cast<int>(length);
}

int indicatorWidth() {
    return std::max(Format::FORMAT_AM_LEN, Format::FORMAT_PM_LEN);
}

std::string_view separator() {
    return {Format::FORMAT_TIME_SEP, static_cast<std::size_t>(Format::FORMAT_TIME_SEP_LEN)};
}

std::string_view indicator(bool morning) {
    const char* const text = morning ? Format::FORMAT_AM_STR : Format::FORMAT_PM_STR;
    const int length = morning ? Format::FORMAT_AM_LEN : Format::FORMAT_PM_LEN;
    return {text, static_cast<std::size_t>(length)};
}

/// Takes blanks and one of the indicators.
bool takeIndicator(FieldReader& reader, bool& morning) {
    reader.SkipBlanks();
    morning = reader.TakeNoCase(indicator(true));
    return morning || reader.TakeNoCase(indicator(false));
}

/// Takes an indicator where one must stand; behind the time also the blanks of its own text.
bool takeIndicatorOf(bool prefix, FieldReader& reader, bool& morning) {
    if (Format::FORMAT_24HOUR || prefix != (Format::FORMAT_POS_PREFIX != 0)) return true;
    if (!takeIndicator(reader, morning)) return false;
    if (!prefix) {
        reader.SkipBlanks(static_cast<std::size_t>(indicatorWidth()) - indicator(morning).size());
    }
    return true;
}

int hourOfDay(int hour, bool morning) {
    if (Format::FORMAT_24HOUR) return hour;
    if (hour == cNoonHour && morning) return 0;
    const bool counts = hour >= 1 && hour < cNoonHour && !morning;
    return counts ? hour + cNoonHour : hour;
}

int hourShown(int hour) {
    if (Format::FORMAT_24HOUR) return hour;
    return hour == 0 ? cNoonHour : hour > cNoonHour ? hour - cNoonHour : hour;
}

bool isTime(int hour, int minute, int second) {
    return hour >= 0 && hour < cHoursPerDay && minute >= 0 && minute < cMinutesPerHour &&
           second >= 0 && second < cSecondsPerMinute;
}

}  // namespace

Time::TimeFormat::TimeFormat() {
    Read();
    tessalink::whenHostServicesChange(Read);
}

void Time::TimeFormat::Read() {
    const tessalink::LocaleValues& values = tessalink::localeValues();
    FORMAT_TIME_SEP_LEN = keep(FORMAT_TIME_SEP, values.timeSeparator);
    FORMAT_24HOUR = values.is24Hour;
    FORMAT_POS_PREFIX = values.indicatorInFront;
    FORMAT_AM_LEN = keep(FORMAT_AM_STR, FORMAT_24HOUR ? "" : values.morningIndicator.GetString());
    FORMAT_PM_LEN = keep(FORMAT_PM_STR, FORMAT_24HOUR ? "" : values.afternoonIndicator.GetString());
    const int indicatorPart = FORMAT_24HOUR ? 0 : 1 + indicatorWidth();
    FORMAT_LEN = 2 * FORMAT_TIME_SEP_LEN + 3 * cFieldWidth + indicatorPart;
    FORMAT_SHORT_LEN = FORMAT_TIME_SEP_LEN + 2 * cFieldWidth + indicatorPart;
}

Time::Time(const Time& other)
    : CObject(), m_hour(other.m_hour), m_minute(other.m_minute), m_second(other.m_second) {}

Time& Time::operator=(const Time& other) {
    m_hour = other.m_hour;
    m_minute = other.m_minute;
    m_second = other.m_second;
    return *this;
}

void Time::Clear() {
    *this = Time();
}

int Time::Set(int hour, int minute, int second) {
    if (!isTime(hour, minute, second)) return 0;
    m_hour = static_cast<std::uint8_t>(hour);
    m_minute = static_cast<std::uint8_t>(minute);
    m_second = static_cast<std::uint8_t>(second);
    return 1;
}

int Time::Set(unsigned long hhmmss) {
    if (hhmmss > cLastTime) return 0;
    return Set(static_cast<int>(hhmmss / 10000), static_cast<int>(hhmmss % 10000 / 100),
               static_cast<int>(hhmmss % 100));
}

int Time::Set(const char* text) {
    FieldReader reader(text != nullptr ? text : "");
    bool morning = true;
    int hour = 0;
    int minute = 0;
    int second = 0;
    if (!takeIndicatorOf(true, reader, morning)) return 0;
    if (!reader.TakeNumber(hour) || !reader.Take(separator())) return 0;
    if (!reader.TakeNumber(minute)) return 0;
    if (reader.Take(separator())) reader.TakeNumber(second);
    if (!takeIndicatorOf(false, reader, morning) || !reader.IsAtEnd()) return 0;
    return Set(hourOfDay(hour, morning), minute, second);
}

void Time::SetNow() {
    const tessalink::CalendarTime now = tessalink::localTime();
    // A leap second counts as the second before.
    Set(now.hour, now.minute, std::min(now.second, cSecondsPerMinute - 1));
}

std::uint32_t Time::Get() const {
    return IsValid() ? m_hour * 10000u + m_minute * 100u + m_second : 0;
}

void Time::Get(int& hour, int& minute, int& second) const {
    hour = GetHour();
    minute = GetMin();
    second = GetSec();
}

void Time::Minus(const Time& other, int& hours, int& minutes, int& seconds) const {
    hours = minutes = seconds = 0;
    if (!IsValid() || !other.IsValid()) return;
    const bool negative = *this < other;
    const Time& earlier = negative ? *this : other;
    const Time& later = negative ? other : *this;
    hours = later.m_hour - earlier.m_hour;
    minutes = later.m_minute - earlier.m_minute;
    seconds = later.m_second - earlier.m_second;
    if (minutes < 0 || (minutes == 0 && seconds < 0)) {
        minutes += cMinutesPerHour;
        --hours;
    }
    if (seconds < 0) {
        seconds += cSecondsPerMinute;
        --minutes;
    }
    if (!negative) return;
    for (int* part : {&hours, &minutes, &seconds}) *part = -*part;
}

CString Time::GetAsStr(int shortFormat) const {
    if (!IsValid()) return {};
    FieldWriter digits;
    digits.AppendNumber(hourShown(m_hour), cFieldWidth);
    digits.Append(separator());
    digits.AppendNumber(m_minute, cFieldWidth);
    if (!shortFormat) {
        digits.Append(separator());
        digits.AppendNumber(m_second, cFieldWidth);
    }
    if (TimeFormat::FORMAT_24HOUR) return digits.View();
    FieldWriter text(GetTimeFormatLen(shortFormat));
    text.Put(GetHourPos(), digits.View());
    text.Put(GetIndicatorPos(shortFormat), indicator(IsAM()));
    return text.View();
}

int Time::GetTimeFormatLen(int shortFormat) {
    return shortFormat ? TimeFormat::FORMAT_SHORT_LEN : TimeFormat::FORMAT_LEN;
}

int Time::GetHourPos() {
    const bool prefix = !TimeFormat::FORMAT_24HOUR && TimeFormat::FORMAT_POS_PREFIX;
    return prefix ? indicatorWidth() + 1 : 0;
}

int Time::GetMinPos() {
    return GetHourPos() + TimeFormat::FORMAT_TIME_SEP_LEN + cFieldWidth;
}

int Time::GetSecPos(int shortFormat) {
    return shortFormat ? -1 : GetMinPos() + TimeFormat::FORMAT_TIME_SEP_LEN + cFieldWidth;
}

int Time::GetIndicatorPos(int shortFormat) {
    if (TimeFormat::FORMAT_24HOUR) return -1;
    if (TimeFormat::FORMAT_POS_PREFIX) return 0;
    return (shortFormat ? GetMinPos() : GetSecPos(shortFormat)) + cFieldWidth + 1;
}

CString Time::GetBlankFormatStr(int shortFormat) {
    constexpr std::string_view blanks = "__";
    FieldWriter text(GetTimeFormatLen(shortFormat));
    text.Put(GetHourPos(), blanks);
    text.Put(GetHourPos() + cFieldWidth, separator());
    text.Put(GetMinPos(), blanks);
    if (!shortFormat) {
        text.Put(GetMinPos() + cFieldWidth, separator());
        text.Put(GetSecPos(shortFormat), blanks);
    }
    if (!TimeFormat::FORMAT_24HOUR) text.Put(GetIndicatorPos(shortFormat), indicator(true));
    return text.View();
}

void Time::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive << m_hour << m_minute << m_second;
        return;
    }
    std::uint8_t hour = 0;
    std::uint8_t minute = 0;
    std::uint8_t second = 0;
    archive >> hour >> minute >> second;
    if (hour == cEmptyHour) {
        Clear();
    } else if (!Set(hour, minute, second)) {
        AfxThrowArchiveException(CArchiveException::genericException);
    }
}

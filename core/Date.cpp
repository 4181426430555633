#include "core/Date.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string_view>

#include "core/detail/FieldReader.h"
#include "core/detail/FieldWriter.h"
#include "platform/base/HostServices.h"
#include "platform/files/CArchive.h"
#include "platform/files/Locale.h"

using tessalink::detail::FieldReader;
using tessalink::detail::FieldWriter;

IMPLEMENT_SERIAL(Date, CObject, 0)

const std::uint8_t Date::days_in_month[13] = {0, 31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};

namespace {

constexpr int cMonths = 12;
constexpr int cLongestMonth = 31;
constexpr int cFebruary = 2;
constexpr int cCentury = 100;
constexpr unsigned long cLastDate = Date::cLastYear * 10000ul + 1231;

enum Field : std::size_t { eYear, eMonth, eDay };
constexpr std::size_t cFields = 3;
constexpr std::array<int, cFields> cWidths = {4, 2, 2};
constexpr std::array<std::string_view, cFields> cMasks = {"YYYY", "MM", "DD"};

using Values = std::array<int, cFields>;
using Order = std::array<Field, cFields>;
/// By DateFormat.
constexpr std::array<Order, 3> cOrders = {
    {{eMonth, eDay, eYear}, {eDay, eMonth, eYear}, {eYear, eMonth, eDay}}};
constexpr const Order& cUSOrder = cOrders[Date::dfMonthDayYear];

/// The part of the locale that dates need.
struct LocalFormat {
    int code = 0;
    const Order* order = nullptr;  ///< null when the code is unknown
    std::array<char, Date::cMaxSeparator + 1> separator{};
    std::size_t separatorLength = 0;
    std::array<int, cFields> starts{};

    static LocalFormat Read();
    std::string_view Separator() const { return {separator.data(), separatorLength}; }
};

LocalFormat LocalFormat::Read() {
    const tessalink::LocaleValues& values = tessalink::localeValues();
    LocalFormat format;
    format.code = values.dateOrder;
    format.separatorLength = ::strnlen(values.dateSeparator, Date::cMaxSeparator);
    std::copy_n(values.dateSeparator.GetString(), format.separatorLength, format.separator.begin());
    format.starts.fill(-1);
    if (format.code < 0 || format.code >= static_cast<int>(cOrders.size())) return format;
    format.order = &cOrders[static_cast<std::size_t>(format.code)];
    int start = 0;
    for (const Field field : *format.order) {
        format.starts[field] = start;
        start += cWidths[field] + static_cast<int>(format.separatorLength);
    }
    return format;
}

LocalFormat& keptFormat() {
    static LocalFormat format = LocalFormat::Read();
    return format;
}

const LocalFormat& localFormat() {
    // Read before it listens: so the locale's values, which it reads, are forgotten before it reads
    // them again.
    static const LocalFormat& format = keptFormat();
    static const bool listening =
        (tessalink::whenHostServicesChange([] { keptFormat() = LocalFormat::Read(); }), true);
    static_cast<void>(listening);
    return format;
}

constexpr bool isLeapYear(int year) {
    return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int lengthOf(int year, int month) {
    return Date::days_in_month[month] + (month == cFebruary && isLeapYear(year) ? 1 : 0);
}

/// Whether day and month can be, whatever the year.
bool isMonthAndDay(int month, int day) {
    return month >= 1 && month <= cMonths && day >= 1 && day <= cLongestMonth;
}

bool isBefore(int month, int day, int otherMonth, int otherDay) {
    return month < otherMonth || (month == otherMonth && day < otherDay);
}

/// The year of the most recent day with this two-digit year that is not in the future.
int completedYear(int year, int month, int day) {
    const tessalink::CalendarTime today = tessalink::localTime();
    const int yearNow = today.year % cCentury;
    const bool thisCentury =
        yearNow > year || (yearNow == year && !isBefore(today.month, today.day, month, day));
    return today.year - yearNow + year - (thisCentury ? 0 : cCentury);
}

CString textOf(const Values& values, const Order& order, std::string_view separator) {
    FieldWriter text;
    for (const Field field : order) {
        if (field != order.front()) text.Append(separator);
        text.AppendNumber(values[field], cWidths[field]);
    }
    return text.View();
}

/// Reads three numbers in the order, with a separator between them that `takeSeparator` takes.
template <class TakeSeparator>
bool read(const char* text, const Order& order, TakeSeparator takeSeparator, Values& values) {
    FieldReader reader(text != nullptr ? text : "");
    for (const Field field : order) {
        if (field != order.front() && !takeSeparator(reader)) return false;
        if (!reader.TakeNumber(values[field])) return false;
    }
    return reader.IsAtEnd();
}

}  // namespace

Date::Date(const Date& other)
    : CObject(), m_year(other.m_year), m_month(other.m_month), m_day(other.m_day) {}

Date& Date::operator=(const Date& other) {
    store(other.m_year, other.m_month, other.m_day);
    return *this;
}

void Date::Clear() {
    *this = Date();
}

int Date::Set(int year, int month, int day) {
    if (year < 0 || (year >= cFirstRefusedYear && year < cFirstYear)) return 0;
    if (!isMonthAndDay(month, day)) return 0;
    if (year < cCentury) year = completedYear(year, month, day);
    // A clock that is far off may have completed it to anything.
    if (year < 0 || year > cLastYear || day > lengthOf(year, month)) return 0;
    store(year, month, day);
    return 1;
}

int Date::Set(unsigned long yyyymmdd) {
    if (yyyymmdd > cLastDate) return 0;
    return Set(static_cast<int>(yyyymmdd / 10000), static_cast<int>(yyyymmdd % 10000 / 100),
               static_cast<int>(yyyymmdd % 100));
}

int Date::SetUS(const char* text) {
    Values values{};
    const auto takeSeparator = [](FieldReader& reader) {
        return reader.Take("/") || reader.Take("-");
    };
    if (!read(text, cUSOrder, takeSeparator, values)) return 0;
    return Set(values[eYear], values[eMonth], values[eDay]);
}

int Date::SetLocal(const char* text) {
    const LocalFormat& format = localFormat();
    Values values{};
    const auto takeSeparator = [&](FieldReader& reader) { return reader.Take(format.Separator()); };
    if (format.order == nullptr || !read(text, *format.order, takeSeparator, values)) return 0;
    return Set(values[eYear], values[eMonth], values[eDay]);
}

void Date::SetToday() {
    const tessalink::CalendarTime today = tessalink::localTime();
    if (today.year >= cFirstYear) Set(today.year, today.month, today.day);
}

std::uint32_t Date::Get() const {
    return IsValid() ? m_year * 10000u + m_month * 100u + m_day : 0;
}

void Date::Get(int& year, int& month, int& day) const {
    year = IsValid() ? m_year : 0;
    month = IsValid() ? m_month : 0;
    day = IsValid() ? m_day : 0;
}

int Date::IsLeapYear() const {
    return IsValid() && isLeapYear(m_year);
}

void Date::Minus(const Date& other, int& years, int& months, int& days) const {
    years = months = days = 0;
    if (!IsValid() || !other.IsValid()) return;
    const bool negative = *this < other;
    const Date& earlier = negative ? *this : other;
    const Date& later = negative ? other : *this;
    years = later.m_year - earlier.m_year;
    months = later.m_month - earlier.m_month;
    days = later.m_day - earlier.m_day;
    if (isBefore(later.m_month, later.m_day, earlier.m_month, earlier.m_day)) {
        months += cMonths;
        --years;
    }
    if (days < 0) {
        days += lengthOf(earlier.m_year, earlier.m_month);
        --months;
    }
    if (!negative) return;
    for (int* part : {&years, &months, &days}) *part = -*part;
}

CString Date::GetAsLocalStr() const {
    const LocalFormat& format = localFormat();
    if (!IsValid() || format.order == nullptr) return {};
    return textOf({m_year, m_month, m_day}, *format.order, format.Separator());
}

CString Date::GetAsUSStr() const {
    return IsValid() ? textOf({m_year, m_month, m_day}, cUSOrder, "/") : CString();
}

int Date::GetLocalDateFormat() {
    return localFormat().code;
}

int Date::GetLocalDateFormatLen() {
    constexpr int digits = 8;
    return 2 * static_cast<int>(localFormat().separatorLength) + digits;
}

CString Date::GetLocalDateFormatMask() {
    const LocalFormat& format = localFormat();
    if (format.order == nullptr) return {};
    FieldWriter mask;
    for (const Field field : *format.order) {
        if (field != format.order->front()) mask.Append(format.Separator());
        mask.Append(cMasks[field]);
    }
    return mask.View();
}

int Date::GetYearStart() {
    return localFormat().starts[eYear];
}

int Date::GetMonthStart() {
    return localFormat().starts[eMonth];
}

int Date::GetDayStart() {
    return localFormat().starts[eDay];
}

const char* Date::GetDateSep() {
    return localFormat().separator.data();
}

void Date::Serialize(CArchive& archive) {
    if (archive.IsStoring()) {
        archive << m_year << m_month << m_day;
        return;
    }
    std::uint16_t year = 0;
    std::uint8_t month = 0;
    std::uint8_t day = 0;
    archive >> year >> month >> day;
    if (year == cEmptyYear) {
        Clear();
    } else if (isMonthAndDay(month, day) && day <= lengthOf(year, month)) {
        store(year, month, day);
    } else {
        AfxThrowArchiveException(CArchiveException::genericException);
    }
}

void Date::store(int year, int month, int day) {
    m_year = static_cast<std::uint16_t>(year);
    m_month = static_cast<std::uint8_t>(month);
    m_day = static_cast<std::uint8_t>(day);
}

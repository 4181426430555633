#pragma once

#include <compare>
#include <cstdint>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"
#include "platform/base/LocaleValues.h"

class CArchive;

/// A day of the Gregorian calendar, or no day ("empty"): birth dates, test dates, and the age
/// between them.
///
/// No operation raises an error, but for archive faults. A setter that refuses returns 0 and leaves
/// the date as it was.
class TESSALINK_API Date : public CObject {
    DECLARE_SERIAL(Date)

public:
    /// The order of the fields in local text.
    enum DateFormat : int {
        dfMonthDayYear = tessalink::monthDayYear,
        dfDayMonthYear = tessalink::dayMonthYear,
        dfYearMonthDay = tessalink::yearMonthDay
    };

    /// Years from here to here are refused; those below are two-digit years.
    static constexpr int cFirstRefusedYear = 100;
    static constexpr int cFirstYear = 1800;  ///< the first year that is a date's
    static constexpr int cLastYear = 65534;  ///< the last year that is a date's

    /// The length of each month (1 to 12) in a common year; entry 0 is 0.
    static const std::uint8_t days_in_month[13];

    /// Empty.
    Date() = default;
    /// Empty when Set refuses.
    Date(int year, int month, int day) { Set(year, month, day); }
    /// From US text; empty when SetUS refuses.
    Date(const char* text) { SetUS(text); }
    Date(unsigned long yyyymmdd) { Set(yyyymmdd); }
    Date(const Date& other);
    Date& operator=(const Date& other);
    ~Date() override = default;

    /// Makes the date empty.
    void Clear();

    /// Returns 1, or 0 when there is no such day or its year is refused. A year below 100 is a
    /// two-digit year: it becomes that of the most recent such date that is not in the future.
    int Set(int year, int month, int day);
    /// From an integer of the form YYYYMMDD: 20010307 is 7 March 2001.
    int Set(unsigned long yyyymmdd);
    /// From text: month, day and year with "/" or "-" between them. Blanks may stand around the
    /// numbers.
    int SetUS(const char* text);
    /// From text in the order and with the separator of the user's locale, blanks likewise.
    int SetLocal(const char* text);
    /// The local date now.
    void SetToday();

    /// YYYYMMDD; 0 when empty.
    std::uint32_t Get() const;
    /// 0 each when empty.
    void Get(int& year, int& month, int& day) const;
    /// -1 when empty.
    int GetYear() const { return IsValid() ? m_year : -1; }
    /// 1 to 12; -1 when empty.
    int GetMonth() const { return IsValid() ? m_month : -1; }
    /// 1 to 31; -1 when empty.
    int GetDay() const { return IsValid() ? m_day : -1; }
    /// 0 when empty.
    int IsValid() const { return m_year != cEmptyYear; }
    /// 0 when empty.
    int IsLeapYear() const;

    /// The age: this date less the other in whole years, whole months and days, all three with the
    /// sign of the whole; 0 each when one is empty. The days that a month lends are those of the
    /// month of the earlier date: from 31 January to 1 March it is 1 month and 1 day.
    void Minus(const Date& other, int& years, int& months, int& days) const;

    /// The empty date is equal to itself and before all others.
    bool operator==(const Date& other) const { return Get() == other.Get(); }
    /// Earlier dates come first.
    std::strong_ordering operator<=>(const Date& other) const { return Get() <=> other.Get(); }

    /// The text in the user's locale, of the width GetLocalDateFormatLen (a year from 10000 on is
    /// wider); an empty text when empty or the locale's order is unknown.
    CString GetAsLocalStr() const;
    /// "MM/DD/YYYY"; an empty text when empty.
    CString GetAsUSStr() const;

    /// The user's locale, read on first use and again when host services are set. Widths and
    /// positions are in characters. In an unknown order the positions are -1 and the mask is empty.
    static constexpr int cMaxSeparator = 5;
    /// A DateFormat, or the number of an unknown order.
    static int GetLocalDateFormat();
    /// The width of the text in the user's locale.
    static int GetLocalDateFormatLen();
    /// "MM/DD/YYYY" with the fields where the text has them.
    static CString GetLocalDateFormatMask();
    /// The position of the year in the local text.
    static int GetYearStart();
    /// The position of the month in the local text.
    static int GetMonthStart();
    /// The position of the day in the local text.
    static int GetDayStart();
    /// What stands between the fields of the local text.
    static const char* GetDateSep();

    /// Year (16 bits, little-endian; 65535 when empty), month and day (a byte each). Archive faults
    /// pass through; bytes that are no date raise CArchiveException (genericException), and the
    /// date stays as it was.
    void Serialize(CArchive& archive) override;

private:
    static constexpr std::uint16_t cEmptyYear = 65535;

    void store(int year, int month, int day);

    std::uint16_t m_year = cEmptyYear;
    std::uint8_t m_month = 0;
    std::uint8_t m_day = 0;
};

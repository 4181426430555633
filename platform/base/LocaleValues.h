#pragma once

#include "platform/base/CString.h"

namespace tessalink {

/// The order of the fields of a date, numbered as in the classic locale value.
enum DateOrder : int { monthDayYear = 0, dayMonthYear = 1, yearMonthDay = 2 };

/// How the user writes times, dates and decimals. The default values are those of no particular
/// country: 13:05:09, 03/07/2001 and 2.5.
struct LocaleValues {
    CString timeSeparator = ":";  ///< between hour, minute and second
    bool is24Hour = true;  ///< counts hours from 0 to 23; otherwise from 1 to 12, with an indicator
    /// The rest of the time counts on a 12-hour clock only.
    bool indicatorInFront = false;  ///< "AM 01:05" instead of "01:05 AM"
    CString morningIndicator;       ///< "AM"
    CString afternoonIndicator;     ///< "PM"

    int dateOrder = monthDayYear;  ///< a DateOrder; any other number is an order that nobody knows
    CString dateSeparator = "/";   ///< between the fields of a date

    CString decimalSeparator = ".";  ///< in what is keyed; files and reports have the full stop
};

/// A moment as calendar and clock on the wall show it.
struct CalendarTime {
    int year = 0;    ///< with its century
    int month = 0;   ///< 1 to 12
    int day = 0;     ///< 1 to 31
    int hour = 0;    ///< 0 to 23
    int minute = 0;  ///< 0 to 59
    int second = 0;  ///< 0 to 60
};

}  // namespace tessalink

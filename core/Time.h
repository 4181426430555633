#pragma once

#include <compare>
#include <cstdint>

#include "platform/base/CObject.h"
#include "platform/base/CString.h"
#include "platform/base/Export.h"

class CArchive;

/// A time of day, or no time ("empty"), for instance when a test was begun. Its text has a fixed
/// width in the user's locale, so that an edit box with a fixed pattern of blanks can hold it.
///
/// No operation raises an error, but for archive faults. A setter that refuses returns 0 and leaves
/// the time as it was.
class TESSALINK_API Time : public CObject {
    DECLARE_SERIAL(Time)

public:
    /// How times are written: the user's locale, read when the library is loaded and again when
    /// host services are set. There is one record; all its values are static. Widths, lengths and
    /// positions are in characters.
    class TESSALINK_API TimeFormat {
    public:
        static constexpr int cMaxSeparator = 4;  ///< the longest separator, in characters
        static constexpr int cMaxIndicator = 9;  ///< the longest indicator, in characters

        TimeFormat();

        static char FORMAT_TIME_SEP[cMaxSeparator + 1];  ///< between the fields
        static int FORMAT_TIME_SEP_LEN;                  ///< the length of the separator
        static int FORMAT_24HOUR;      ///< 1 on a 24-hour clock, 0 on a 12-hour clock
        static int FORMAT_POS_PREFIX;  ///< 1 when the indicator stands before the time
        static char FORMAT_AM_STR[cMaxIndicator + 1];  ///< empty on a 24-hour clock
        static int FORMAT_AM_LEN;  ///< the length of the indicator for the morning
        static char FORMAT_PM_STR[cMaxIndicator + 1];  ///< what stands in the text after noon
        static int FORMAT_PM_LEN;     ///< the length of the indicator for the afternoon
        static int FORMAT_LEN;        ///< width of the text with seconds
        static int FORMAT_SHORT_LEN;  ///< width of the text without

    private:
        static void Read();
    };

    /// Empty.
    Time() = default;
    /// Empty when the values are out of range.
    Time(int hour, int minute, int second) { Set(hour, minute, second); }
    /// As Set does it; empty when the text is no time.
    Time(const char* text) { Set(text); }
    Time(unsigned long hhmmss) { Set(hhmmss); }
    Time(const Time& other);
    Time& operator=(const Time& other);
    ~Time() override = default;

    /// Makes the time empty.
    void Clear();

    /// Hour 0 to 23, minute and second 0 to 59; returns 1, or 0 when one is out of range.
    int Set(int hour, int minute, int second);
    /// From an integer of the form HHMMSS: 70809 is 07:08:09.
    int Set(unsigned long hhmmss);
    /// From text as the user's locale writes it: hour and minute, and seconds if there are any. On
    /// a 12-hour clock the indicator is required (in letters of either case), on a 24-hour clock
    /// there is none. Blanks may stand around the numbers. Behind a shorter indicator may be the
    /// blanks that its own text has there.
    int Set(const char* text);
    /// The local time now.
    void SetNow();

    /// HHMMSS; 0 when empty, as at midnight.
    std::uint32_t Get() const;
    /// -1 each when empty.
    void Get(int& hour, int& minute, int& second) const;
    /// 0 to 23; -1 when empty.
    int GetHour() const { return IsValid() ? m_hour : -1; }
    /// 0 to 59; -1 when empty.
    int GetMin() const { return IsValid() ? m_minute : -1; }
    /// 0 to 59; -1 when empty.
    int GetSec() const { return IsValid() ? m_second : -1; }
    /// 1 before noon; 0 otherwise and when empty.
    int IsAM() const { return m_hour < cNoon; }
    /// 0 when empty.
    int IsValid() const { return m_hour < cEmptyHour; }

    /// This time less the other, all three with the sign of the whole; 0 each when one is empty.
    void Minus(const Time& other, int& hours, int& minutes, int& seconds) const;

    /// The empty time is equal to itself and before all others.
    bool operator==(const Time& other) const { return order_key() == other.order_key(); }
    /// Earlier times come first.
    std::strong_ordering operator<=>(const Time& other) const {
        return order_key() <=> other.order_key();
    }

    /// The text in the user's locale, without seconds when `shortFormat` is nonzero; an empty text
    /// when empty.
    CString GetAsStr(int shortFormat) const;

    /// The record of how times are written.
    static const TimeFormat& GetTimeFormatA() { return m_time_format; }
    /// The width of the text.
    static int GetTimeFormatLen(int shortFormat);
    /// What stands between hour and minute.
    static const char* GetTimeSep() { return TimeFormat::FORMAT_TIME_SEP; }
    /// Where the fields start in the text; -1 where there is none (seconds in the short text, the
    /// indicator on a 24-hour clock).
    static int GetHourPos();
    /// Where the minutes start.
    static int GetMinPos();
    /// Where the seconds start; -1 in the short text.
    static int GetSecPos(int shortFormat);
    /// Where the indicator starts; -1 on a 24-hour clock.
    static int GetIndicatorPos(int shortFormat);
    /// What an empty field shows: "__:__:__ AM".
    static CString GetBlankFormatStr(int shortFormat);

    /// Three bytes: hour (255 when empty), minute, second. Archive faults pass through; bytes that
    /// are no time raise CArchiveException (genericException), and the time stays as it was.
    void Serialize(CArchive& archive) override;

private:
    static constexpr std::uint8_t cEmptyHour = 255;
    static constexpr int cNoon = 12;

    int order_key() const { return IsValid() ? static_cast<int>(Get()) : -1; }

    static TimeFormat m_time_format;

    std::uint8_t m_hour = cEmptyHour;
    std::uint8_t m_minute = 0;
    std::uint8_t m_second = 0;
};

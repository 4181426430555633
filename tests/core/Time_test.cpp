#include "core/Time.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <optional>
#include <string>
#include <vector>

#include "tests/core/ValueArchive.h"
#include "tests/support/Dice.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

constexpr int cSecondsPerDay = 24 * 60 * 60;
constexpr int cSeed = 5;

/// A locale, and whether the texts of its mornings and afternoons can be read again.
struct TimeWriting {
    std::string separator;
    bool is24Hour = true;
    bool inFront = false;
    std::string morning = {};
    std::string afternoon = {};
    bool readsMornings = true;
    bool readsAfternoons = true;

    operator LocaleValues() const {
        LocaleValues values;
        values.timeSeparator = separator.c_str();
        values.is24Hour = is24Hour;
        values.indicatorInFront = inFront;
        values.morningIndicator = morning.c_str();
        values.afternoonIndicator = afternoon.c_str();
        return values;
    }
};

const TimeWriting cGerman = {":"};
const TimeWriting cAmerican = {":", false, false, "AM", "PM"};
const TimeWriting cChinese = {":", false, true, "AM", "PM"};

const std::vector<TimeWriting> cTimeWritings = {
    cGerman,
    {"."},
    {" h ", true, false, "", "", false, false},  // blanks behind a number belong to the number
    {"h "},
    {"", true, false, "", "", false, false},  // the digits are one number
    {"<::>"},
    {"<::>more"},
    {":", true, true, "AM", "PM"},  // indicators that don't count
    cAmerican,
    cChinese,
    {".", false, false, "a.m.", "p.m."},
    {"", false, false, "AM", "PM", false, false},
    {":", false, false, "a", "post"},
    {":", false, true, "ante", "p"},
    {":", false, false, "AM", ""},
    {":", false, true, "AM", ""},
    {":", false, false, "", "PM", true, false},  // an empty indicator matches at once
    {":", false, true, "", "PM", true, false},
    {":", false, false, " AM", "PM", false, true},  // blanks before an indicator are skipped
    {":", false, false, "AM", "AMP", true, false},
    {":", false, false, "AMP", "AM"},
    {"<::>", false, false, "forenoon!", "afternoon"},
    {"<::>", false, true, "forenoon!!", "afternoon and evening"},
    {":", false, false, "\xD6\xD6", "\xD6S"},
};

std::string twoDigits(int number) {
    return {static_cast<char>('0' + number / 10), static_cast<char>('0' + number % 10)};
}

/// How a time is written, put together as one does it by hand.
struct Model {
    explicit Model(const TimeWriting& writing)
        : writing(writing),
          separator(writing.separator.substr(0, 4)),
          morning(writing.morning.substr(0, 9)),
          afternoon(writing.afternoon.substr(0, 9)) {
        const std::size_t width = std::max(morning.size(), afternoon.size());
        morning.resize(width, ' ');
        afternoon.resize(width, ' ');
    }

    std::string Text(int hour, const std::string& minute, const std::string& second) const {
        const int shown = writing.is24Hour ? hour : (hour + 11) % 12 + 1;
        return Text(hour < 12, twoDigits(shown), minute, second);
    }
    /// Of a part of the day; without seconds when they are empty.
    std::string Text(bool isMorning, const std::string& hour, const std::string& minute,
                     const std::string& second) const {
        const std::string digits =
            hour + separator + minute + (second.empty() ? "" : separator + second);
        if (writing.is24Hour) return digits;
        const std::string& indicator = isMorning ? morning : afternoon;
        return writing.inFront ? indicator + " " + digits : digits + " " + indicator;
    }

    const TimeWriting& writing;
    std::string separator;
    std::string morning;
    std::string afternoon;
};

void checkText(const Time& time, int shortFormat, const std::string& expected, bool isReadable) {
    const CString text = time.GetAsStr(shortFormat);
    ASSERT_EQ(text, expected.c_str());
    const Time before(23, 59, 58);
    Time read = before;
    ASSERT_EQ(read.Set(text.GetString()), isReadable) << text;
    const Time whole(time.GetHour(), time.GetMin(), shortFormat ? 0 : time.GetSec());
    ASSERT_TRUE(read == (isReadable ? whole : before)) << text;
}

TEST(Time, EveryTimeThroughTextAndBackInEveryWriting) {
    for (const TimeWriting& writing : cTimeWritings) {
        const HostServicesScope scope(writing);
        const Model model(writing);
        for (int count = 0; count < cSecondsPerDay; ++count) {
            const int hour = count / 3600;
            const std::string minute = twoDigits(count / 60 % 60);
            const std::string second = twoDigits(count % 60);
            const Time time(hour, count / 60 % 60, count % 60);
            const bool readable = hour < 12 ? writing.readsMornings : writing.readsAfternoons;
            checkText(time, 0, model.Text(hour, minute, second), readable);
            if (count % 60 < 2) checkText(time, 1, model.Text(hour, minute, ""), readable);
            if (HasFatalFailure()) return;
        }
    }
}

TEST(Time, ThePositionsAreThoseOfTheFieldsInTextAndBlankPattern) {
    for (const TimeWriting& writing : cTimeWritings) {
        const HostServicesScope scope(writing);
        const Model model(writing);
        for (const int shortFormat : {0, 1}) {
            const CString pattern = Time::GetBlankFormatStr(shortFormat);
            SCOPED_TRACE(pattern.GetString());
            EXPECT_EQ(pattern, model.Text(true, "__", "__", shortFormat ? "" : "__").c_str());
            EXPECT_EQ(pattern.GetLength(), Time::GetTimeFormatLen(shortFormat));
            EXPECT_EQ(Time::GetSecPos(1), -1);

            const Time time(10, 27, 53);
            std::string filled = pattern.GetString();
            const auto fill = [&](int position, const char* digits) {
                if (position >= 0) filled.replace(static_cast<std::size_t>(position), 2, digits);
            };
            fill(Time::GetHourPos(), "10");
            fill(Time::GetMinPos(), "27");
            fill(Time::GetSecPos(shortFormat), "53");
            EXPECT_EQ(time.GetAsStr(shortFormat), filled.c_str());

            const int indicator = Time::GetIndicatorPos(shortFormat);
            ASSERT_EQ(indicator == -1, writing.is24Hour);
            if (writing.is24Hour) continue;
            const Time evening(22, 27, 53);
            EXPECT_EQ(evening.GetAsStr(shortFormat)
                          .Mid(indicator, static_cast<int>(model.afternoon.size())),
                      model.afternoon.c_str());
        }
        EXPECT_EQ(Time::GetTimeSep(), model.separator);
        EXPECT_EQ(
            Time::GetTimeFormatA().FORMAT_AM_LEN,
            writing.is24Hour ? 0 : std::min<int>(9, static_cast<int>(writing.morning.size())));
    }
}

struct TypedTime {
    const TimeWriting& writing;
    const char* text;
    int time;  // HHMMSS, or cRefusedTimes
};
constexpr int cRefusedTimes = -1;

TEST(Time, ReadsWhatPeopleType) {
    const TimeWriting unequal = {":", false, false, "a", "post"};
    const TimeWriting alike = {":", false, false, "amx", "am"};
    const TimeWriting dotted = {"::"};
    const TimeWriting unnamed = {":", false};
    const std::vector<TypedTime> table = {
        {cGerman, "7 : 05", 70500},
        {cGerman, "7:05:", 70500},
        {cGerman, "7:05: ", 70500},
        {cGerman, "  7  :  5  :  9  ", 70509},
        {cGerman, "0007:00005:0", 70500},
        {cGerman, "0:0", 0},
        {cGerman, "23:59:59", 235959},
        {cGerman, "24:00", cRefusedTimes},
        {cGerman, "7:60", cRefusedTimes},
        {cGerman, "7:05:60", cRefusedTimes},
        {cGerman, "4294967303:05", cRefusedTimes},
        {cGerman, "7:18446744073709551621", cRefusedTimes},
        {cGerman, "7:05:99999999999999999999999999999999999999999", cRefusedTimes},
        {cGerman, "", cRefusedTimes},
        {cGerman, nullptr, cRefusedTimes},
        {cGerman, "   ", cRefusedTimes},
        {cGerman, "7", cRefusedTimes},
        {cGerman, "7:", cRefusedTimes},
        {cGerman, ":05", cRefusedTimes},
        {cGerman, "-7:05", cRefusedTimes},
        {cGerman, "+7:05", cRefusedTimes},
        {cGerman, "7:-5", cRefusedTimes},
        {cGerman, "7.05", cRefusedTimes},
        {cGerman, "7:05.30", cRefusedTimes},
        {cGerman, "7:05:09:", cRefusedTimes},
        {cGerman, "7:05:09x", cRefusedTimes},
        {cGerman, "7:05::", cRefusedTimes},
        {cGerman, "\t7:05", cRefusedTimes},
        {cGerman, "7:\t05", cRefusedTimes},
        {cGerman, "7:05\n", cRefusedTimes},
        {cGerman, "7:05\xA0", cRefusedTimes},
        {cGerman, "7:05 PM", cRefusedTimes},
        {cGerman, "__:__:__", cRefusedTimes},
        {dotted, "7::05::09", 70509},
        {dotted, "7::05:", cRefusedTimes},
        {dotted, "7:05", cRefusedTimes},
        {cAmerican, "12:15 am", 1500},
        {cAmerican, "12:15 pm", 121500},
        {cAmerican, "1:2 PM", 130200},
        {cAmerican, "1:2pM", 130200},
        {cAmerican, "1:2:     PM", 130200},
        {cAmerican, "0:30 AM", 3000},
        {cAmerican, "0:30 PM", 3000},
        {cAmerican, "13:00 AM", 130000},
        {cAmerican, "13:00 PM", 130000},
        {cAmerican, "25:00 PM", cRefusedTimes},
        {cAmerican, "1:02", cRefusedTimes},
        {cAmerican, "1:02 P", cRefusedTimes},
        {cAmerican, "1:02 PMs", cRefusedTimes},
        {cAmerican, "1:02 PM ", cRefusedTimes},  // indicators of one length: nothing is padded
        {cAmerican, "PM 1:02", cRefusedTimes},
        {cAmerican, "1:02 AM PM", cRefusedTimes},
        {cChinese, "PM 1:02", 130200},
        {cChinese, "  pm1:02:03  ", 130203},
        {cChinese, "1:02 PM", cRefusedTimes},
        {cChinese, "PM", cRefusedTimes},
        {unnamed, "12:02 ", 200},  // all is morning
        {unequal, "1:02 A   ", 10200},
        {unequal, "1:02 a", 10200},
        {unequal, "1:02 a    ", cRefusedTimes},
        {unequal, "1:02 post", 130200},
        {unequal, "1:02 post ", cRefusedTimes},
        {alike, "1:02 am", 130200},
        {alike, "1:02 amx", 10200},
    };
    for (const TypedTime& typed : table) {
        const HostServicesScope scope(typed.writing);
        Time time(23, 59, 58);
        EXPECT_EQ(time.Set(typed.text), typed.time != cRefusedTimes) << typed.text;
        EXPECT_EQ(time.Get(),
                  typed.time == cRefusedTimes ? 235958u : static_cast<unsigned>(typed.time))
            << typed.text;
        EXPECT_EQ(Time(typed.text).IsValid(), typed.time != cRefusedTimes) << typed.text;
    }
}

TEST(Time, TheWritingIsReadAgainWhenServicesAreSet) {
    HostServicesScope scope(cAmerican);
    const Time time(13, 5, 9);
    EXPECT_EQ(time.GetAsStr(0), "01:05:09 PM");
    EXPECT_EQ(Time::GetTimeFormatA().FORMAT_PM_STR, std::string("PM"));
    scope.Set(cGerman);
    EXPECT_EQ(time.GetAsStr(0), "13:05:09");
    EXPECT_EQ(Time::GetTimeFormatA().FORMAT_PM_STR, std::string());
}

TEST(Time, NumbersAndRefusals) {
    for (int count = 0; count < cSecondsPerDay; ++count) {
        const int number = count / 3600 * 10000 + count / 60 % 60 * 100 + count % 60;
        const Time time(static_cast<std::uint32_t>(number));
        int hour, minute, second;
        time.Get(hour, minute, second);
        ASSERT_EQ(hour * 3600 + minute * 60 + second, count);
        ASSERT_EQ(static_cast<int>(time.Get()), number);
        ASSERT_EQ(time.IsAM(), hour < 12);
    }
    const std::array<std::array<int, 3>, 8> refused = {{{24, 0, 0},
                                                        {0, 60, 0},
                                                        {0, 0, 60},
                                                        {-1, 0, 0},
                                                        {0, -1, 0},
                                                        {0, 0, -1},
                                                        {255, 0, 0},
                                                        {256, 0, 0}}};
    Time time(7, 8, 9);
    for (const auto& [hour, minute, second] : refused) {
        EXPECT_EQ(time.Set(hour, minute, second), 0) << hour << ' ' << minute << ' ' << second;
        EXPECT_FALSE(Time(hour, minute, second).IsValid());
    }
    for (const unsigned long number : {240000ul, 6000ul, 60ul, 2550000ul, 0xFFFFFFFFul}) {
        EXPECT_EQ(time.Set(number), 0) << number;
    }
    if constexpr (sizeof(unsigned long) > sizeof(std::uint32_t)) {
        constexpr std::uint64_t cutToASecond = 0x100000001u;
        EXPECT_EQ(time.Set(static_cast<unsigned long>(cutToASecond)), 0);
    }
    EXPECT_EQ(time.Get(), 70809u);
    EXPECT_EQ(time.Set(0UL), 1);
    EXPECT_TRUE(time == Time(0UL) && time.IsValid());
}

TEST(Time, TheEmptyTime) {
    Time empty;
    Time cleared(7, 8, 9);
    cleared.Clear();
    EXPECT_TRUE(empty == cleared);
    int hour = 1, minute = 1, second = 1;
    empty.Get(hour, minute, second);
    EXPECT_EQ((std::array{hour, minute, second}), (std::array{-1, -1, -1}));
    EXPECT_EQ((std::array{empty.GetHour(), empty.GetMin(), empty.GetSec()}),
              (std::array{-1, -1, -1}));
    EXPECT_EQ(empty.Get(), 0u);
    EXPECT_EQ(empty.IsValid(), 0);
    EXPECT_EQ(empty.IsAM(), 0);
    EXPECT_EQ(empty.GetAsStr(0) + empty.GetAsStr(1), "");
    for (const auto& [a, b] : {std::pair(Time(), Time(1, 2, 3)), {Time(1, 2, 3), Time()}}) {
        hour = minute = second = 1;
        a.Minus(b, hour, minute, second);
        EXPECT_EQ((std::array{hour, minute, second}), (std::array{0, 0, 0}));
    }
}

Time timeAt(int count) {
    return count < 0 ? Time() : Time(count / 3600, count / 60 % 60, count % 60);
}

void checkDifference(int a, int b) {
    int hours, minutes, seconds;
    timeAt(a).Minus(timeAt(b), hours, minutes, seconds);
    const std::div_t rest = std::div((a - b) % 3600, 60);
    ASSERT_EQ((std::array{hours, minutes, seconds}),
              (std::array{(a - b) / 3600, rest.quot, rest.rem}))
        << a << " - " << b;
}

TEST(Time, DifferencesAreThoseOfTheSecondsOfTheDay) {
    Dice dice(cSeed);
    for (int i = 0; i < 500000; ++i) {
        checkDifference(static_cast<int>(dice.Below(cSecondsPerDay)),
                        static_cast<int>(dice.Below(cSecondsPerDay)));
        if (HasFatalFailure()) return;
    }
    // Every way in which hour, minute and second can be before, at and behind the other's.
    const int middle = (12 * 60 + 30) * 60 + 30;
    for (const int hour : {-3600, 0, 3600}) {
        for (const int minute : {-30 * 60, -60, 0, 60, 29 * 60}) {
            for (const int second : {-30, -1, 0, 1, 29}) {
                checkDifference(middle + hour + minute + second, middle);
                checkDifference(middle, middle + hour + minute + second);
            }
        }
    }
}

TEST(Time, TheOrderIsThatOfTheSecondsOfTheDayBehindTheEmptyTime) {
    Dice dice(cSeed);
    std::vector<int> counts = {-1, 0, 59, 60, 3599, 3600, cSecondsPerDay - 1};
    while (counts.size() < 300) counts.push_back(static_cast<int>(dice.Below(cSecondsPerDay)));
    for (const int a : counts) {
        for (const int b : counts) {
            const Time first = timeAt(a);
            const Time second = timeAt(b);
            const std::array found = {first == second, first != second,
                                      first<second, first <= second, first> second,
                                      first >= second};
            ASSERT_EQ(found, (std::array{a == b, a != b, a<b, a <= b, a> b, a >= b}))
                << a << ' ' << b;
        }
    }
}

TEST(Time, NowIsWhatTheClockSays) {
    HostServicesScope scope(CalendarTime{2024, 2, 29, 23, 58, 7});
    Time time;
    time.SetNow();
    EXPECT_EQ(time.Get(), 235807u);
    scope.Set(CalendarTime{2016, 12, 31, 23, 59, 60});
    time.SetNow();
    EXPECT_EQ(time.Get(), 235959u) << "a leap second belongs to the second before";
}

TEST(Time, archives) {
    checkArchive(Time(7, 8, 9), "\x07\x08\x09",
                 {"\x18\0\0", "\xFE\0\0", "\0\x3C\0", "\0\0\x3C", "\x17\xFF\0"});
    checkArchive(Time(), std::string_view("\xFF\0\0", 3), {});
    Time time(1, 2, 3);
    EXPECT_EQ(load(time, "\xFF\x07\x63"), CArchiveException::none);
    EXPECT_EQ(stored(time), std::string("\xFF\0\0", 3)) << "an empty time has no minutes";
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(Time)->CreateObject());
    EXPECT_EQ(stored(*made), std::string("\xFF\0\0", 3));
}

}  // namespace
}  // namespace tessalink::test

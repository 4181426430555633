#include "core/Date.h"

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "tests/core/ValueArchive.h"
#include "tests/support/Dice.h"
#include "tests/support/HostServicesScope.h"

namespace tessalink::test {
namespace {

namespace calendar = std::chrono;

constexpr int cRefused = 0;

/// A day of the standard library's calendar.
struct Day {
    int year = 0;
    int month = 0;
    int day = 0;

    auto operator<=>(const Day&) const = default;
};

calendar::year_month_day inCalendar(const Day& day) {
    return calendar::year_month_day(calendar::year(day.year),
                                    calendar::month(static_cast<unsigned>(day.month)),
                                    calendar::day(static_cast<unsigned>(day.day)));
}

Day fromCalendar(calendar::sys_days days) {
    const calendar::year_month_day ymd(days);
    return {static_cast<int>(ymd.year()), static_cast<int>(static_cast<unsigned>(ymd.month())),
            static_cast<int>(static_cast<unsigned>(ymd.day()))};
}

std::vector<Day> allDays(const Day& first, const Day& last) {
    std::vector<Day> days;
    const calendar::sys_days end(inCalendar(last));
    for (calendar::sys_days day(inCalendar(first)); day <= end; day += calendar::days(1)) {
        days.push_back(fromCalendar(day));
    }
    return days;
}

Date dateOf(const Day& day) {
    return Date(day.year, day.month, day.day);
}

LocaleValues ordered(int order, const char* separator) {
    LocaleValues values;
    values.dateOrder = order;
    values.dateSeparator = separator;
    return values;
}

std::string text(const char* format, int first, int second, int third) {
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), format, first, second, third);
    return buffer.data();
}

TEST(Date, EveryDayThroughNumbersAndUsText) {
    const std::vector<Day> days = allDays({1800, 1, 1}, {2200, 12, 31});
    ASSERT_EQ(days.size(), 146462u);
    for (const Day& day : days) {
        const Date date = dateOf(day);
        Day got;
        date.Get(got.year, got.month, got.day);
        ASSERT_EQ(got, day);
        ASSERT_EQ(date.IsLeapYear(), calendar::year(day.year).is_leap());
        const std::string number = text("%04d%02d%02d", day.year, day.month, day.day);
        ASSERT_EQ(std::to_string(date.Get()), number);
        ASSERT_TRUE(Date(date.Get()) == date) << number;
        const CString us = date.GetAsUSStr();
        ASSERT_EQ(us, text("%02d/%02d/%04d", day.month, day.day, day.year).c_str());
        ASSERT_TRUE(Date(us.GetString()) == date) << number;
    }
}

/// How a locale writes dates, with the places of the fields in a text of its own.
struct Writing {
    int order;
    const char* separator;
    const char* mask;
    bool isReadable = true;
};

const std::vector<Writing> cWritings = {
    {monthDayYear, "/", "MM/DD/YYYY"},
    {dayMonthYear, ".", "DD.MM.YYYY"},
    {yearMonthDay, "-", "YYYY-MM-DD"},
    {monthDayYear, ". ", "MM. DD. YYYY"},
    {dayMonthYear, " de ", "DD de MM de YYYY", false},  // blanks behind a number belong to it
    {dayMonthYear, "de ", "DDde MMde YYYY"},
    {yearMonthDay, "", "YYYYMMDD", false},  // the digits are one number
    {yearMonthDay, "<--->", "YYYY<--->MM<--->DD"},
    {dayMonthYear, "<::::::>", "DD<::::MM<::::YYYY"},
};

TEST(Date, EveryDayThroughLocalTextInEveryWriting) {
    const std::vector<Day> days = allDays({1800, 1, 1}, {2200, 12, 31});
    for (const Writing& writing : cWritings) {
        const HostServicesScope scope(ordered(writing.order, writing.separator));
        const std::string mask = writing.mask;
        const std::array places = {mask.find("YYYY"), mask.find("MM"), mask.find("DD")};
        for (const Day& day : days) {
            std::string expected = mask;
            expected.replace(places[0], 4, text("%04d", day.year, 0, 0));
            expected.replace(places[1], 2, text("%02d", day.month, 0, 0));
            expected.replace(places[2], 2, text("%02d", day.day, 0, 0));
            const Date date = dateOf(day);
            const CString local = date.GetAsLocalStr();
            ASSERT_EQ(local, expected.c_str());
            Date read(2001, 3, 7);
            ASSERT_EQ(read.SetLocal(local.GetString()), writing.isReadable) << local;
            ASSERT_EQ(read.Get(), writing.isReadable ? date.Get() : 20010307u) << local;
        }
    }
}

TEST(Date, MaskWidthAndPositionsOfEveryWriting) {
    for (const Writing& writing : cWritings) {
        const HostServicesScope scope(ordered(writing.order, writing.separator));
        SCOPED_TRACE(writing.mask);
        const CString mask = writing.mask;
        EXPECT_EQ(Date::GetLocalDateFormatMask(), mask);
        EXPECT_EQ(Date::GetLocalDateFormatLen(), mask.GetLength());
        EXPECT_EQ(Date::GetYearStart(), mask.Find("YYYY"));
        EXPECT_EQ(Date::GetMonthStart(), mask.Find("MM"));
        EXPECT_EQ(Date::GetDayStart(), mask.Find("DD"));
        EXPECT_EQ(Date::GetLocalDateFormat(), writing.order);
        EXPECT_EQ(CString(Date::GetDateSep()), CString(writing.separator).Left(5));
    }
}

TEST(Date, AnUnknownOrderHasNoLocalText) {
    for (const int order : {-1, 3, 1000}) {
        const HostServicesScope scope(ordered(order, "--"));
        Date date(2001, 3, 7);
        EXPECT_EQ(Date::GetLocalDateFormat(), order);
        EXPECT_EQ(date.GetAsLocalStr(), "");
        EXPECT_EQ(Date::GetLocalDateFormatMask(), "");
        EXPECT_EQ(Date::GetLocalDateFormatLen(), 12);
        EXPECT_EQ((std::array{Date::GetYearStart(), Date::GetMonthStart(), Date::GetDayStart()}),
                  (std::array{-1, -1, -1}));
        EXPECT_EQ(date.SetLocal("03--08--2002"), 0);
        EXPECT_EQ(date.GetAsUSStr(), "03/07/2001");
    }
}

/// Ages as they are counted on the fingers. Whole years and months are steps to the same day of a
/// later month; what is left is counted day by day, across the end of the earlier date's month when
/// the last step did not come as far as the later date's.
Day countedAge(const Day& from, const Day& to, int daysLeftInMonth) {
    Day at = from;
    Day age;
    while (Day{at.year + 1, at.month, at.day} <= to) {
        ++at.year;
        ++age.year;
    }
    const auto monthLater = [](Day day) {
        day.year += day.month / 12;
        day.month = day.month % 12 + 1;
        return day;
    };
    for (; monthLater(at) <= to; at = monthLater(at)) ++age.month;
    age.day = at.month == to.month ? to.day - at.day : daysLeftInMonth + to.day;
    return age;
}

int daysLeftInMonth(const Day& from) {
    int count = 0;
    for (calendar::sys_days day(inCalendar(from)); fromCalendar(day).month == from.month;) {
        day += calendar::days(1);
        ++count;
    }
    return count - 1;
}

void checkAge(const Date& later, const Date& earlier, const Day& expected) {
    Day age;
    later.Minus(earlier, age.year, age.month, age.day);
    ASSERT_EQ(age, expected) << later.GetAsUSStr() << " - " << earlier.GetAsUSStr();
    earlier.Minus(later, age.year, age.month, age.day);
    ASSERT_EQ(age, (Day{-expected.year, -expected.month, -expected.day}));
}

TEST(Date, AgesOfAllPairsInFourYears) {
    const std::vector<Day> days = allDays({1999, 1, 1}, {2002, 12, 31});
    ASSERT_EQ(days.size(), 1461u);
    std::vector<Date> dates;
    for (const Day& day : days) dates.push_back(dateOf(day));
    for (std::size_t i = 0; i < days.size(); ++i) {
        const int left = daysLeftInMonth(days[i]);
        for (std::size_t j = i; j < days.size(); ++j) {
            checkAge(dates[j], dates[i], countedAge(days[i], days[j], left));
            if (HasFatalFailure()) return;
        }
    }
}

TEST(Date, AgesOfRandomPairs) {
    Dice dice(7);
    const std::vector<Day> days = allDays({1800, 1, 1}, {2200, 12, 31});
    for (int i = 0; i < 100000; ++i) {
        const auto [from, to] = std::minmax(dice.Pick(days), dice.Pick(days));
        checkAge(dateOf(to), dateOf(from), countedAge(from, to, daysLeftInMonth(from)));
        if (HasFatalFailure()) return;
    }
}

TEST(Date, AgesThatAreKnown) {
    const struct {
        Day birth, test, age;
    } table[] = {
        {{2000, 1, 31}, {2000, 3, 1}, {0, 1, 1}},    {{1990, 3, 15}, {2000, 3, 10}, {9, 11, 26}},
        {{2000, 2, 29}, {2001, 2, 28}, {0, 11, 28}}, {{2000, 2, 29}, {2001, 3, 1}, {1, 0, 1}},
        {{1999, 2, 28}, {2000, 2, 29}, {1, 0, 1}},   {{1999, 12, 31}, {2000, 1, 1}, {0, 0, 1}}};
    for (const auto& [birth, test, age] : table) checkAge(dateOf(test), dateOf(birth), age);
}

TEST(Date, TwoDigitYearsAreThoseOfTheLastSuchDay) {
    const std::vector<Day> daysOfLeapYear = allDays({2000, 1, 1}, {2000, 12, 31});
    const Day clocks[] = {{2024, 2, 29}, {2023, 12, 31}, {2024, 1, 1},   {2000, 1, 1},
                          {2000, 2, 29}, {2001, 1, 1},   {1999, 12, 31}, {2100, 3, 1},
                          {2014, 6, 15}, {1900, 2, 28},  {2400, 2, 28}};
    for (const Day& now : clocks) {
        const HostServicesScope scope(CalendarTime{now.year, now.month, now.day, 23, 59, 59});
        for (int year = 0; year < 100; ++year) {
            for (const Day& day : daysOfLeapYear) {
                Day last = {now.year, day.month, day.day};
                while (last.year % 100 != year || last > now) --last.year;
                Date date(1850, 5, 5);
                const bool exists = inCalendar(last).ok();
                ASSERT_EQ(date.Set(year, day.month, day.day), exists);
                ASSERT_TRUE(date == (exists ? dateOf(last) : Date(1850, 5, 5)))
                    << text("%d-%d-%d", year, day.month, day.day) << " typed on "
                    << text("%d-%d-%d", now.year, now.month, now.day);
            }
        }
    }
}

TEST(Date, AClockThatIsWrongMakesNoWrongDates) {
    for (const int year : {0, 99, -1, 100000}) {
        const HostServicesScope scope(CalendarTime{year, 1, 1});
        Date date(2001, 3, 7);
        EXPECT_EQ(date.Set((year + 100) % 100, 12, 31), 0) << year;
        date.SetToday();
        EXPECT_EQ(date.Get(), 20010307u) << year;
    }
}

TEST(Date, RefusesDaysThatAreNone) {
    const Day refused[] = {{2013, 2, 29},  {1900, 2, 29},  {2100, 2, 29},  {2000, 2, 30},
                           {150, 1, 1},    {100, 1, 1},    {1799, 12, 31}, {-1, 1, 1},
                           {-65535, 1, 1}, {65535, 1, 1},  {67537, 3, 7},  {2001, 0, 1},
                           {2001, 13, 1},  {2001, -1, 1},  {2001, 1, 0},   {2001, 1, 32},
                           {2001, 4, 31},  {2001, 6, 31},  {2001, 9, 31},  {2001, 11, 31},
                           {2001, 257, 1}, {2001, 1, 257}, {2001, 1, -1},  {99, 13, 1}};
    Date date(2001, 3, 7);
    for (const Day& day : refused) {
        EXPECT_EQ(date.Set(day.year, day.month, day.day), 0) << day.year << ' ' << day.month;
        EXPECT_FALSE(dateOf(day).IsValid());
    }
    for (const unsigned long number :
         {0ul, 20010229ul, 1500101ul, 17991231ul, 655350101ul, 0xFFFFFFFFul}) {
        EXPECT_EQ(date.Set(number), 0) << number;
    }
    if constexpr (sizeof(unsigned long) > sizeof(std::uint32_t)) {
        constexpr std::uint64_t cutToMarch = 0x100000000u + 20010307;
        EXPECT_EQ(date.Set(static_cast<unsigned long>(cutToMarch)), 0);
    }
    EXPECT_EQ(date.Get(), 20010307u);
    for (const Day& day : {Day{2012, 2, 29}, {2000, 2, 29}, {1800, 1, 1}, {65534, 12, 31}}) {
        EXPECT_EQ(date.Set(day.year, day.month, day.day), 1) << day.year;
        EXPECT_EQ(date.GetDay(), day.day);
        EXPECT_EQ(date.GetMonth(), day.month);
        EXPECT_EQ(date.GetYear(), day.year);
    }
    EXPECT_EQ(date.GetAsUSStr(), "12/31/65534");
}

struct Typed {
    const char* text;
    std::uint32_t date;  // YYYYMMDD, or cRefused
};

template <class Set>
void checkTyped(const std::vector<Typed>& table, Set set) {
    const HostServicesScope scope(CalendarTime{2014, 6, 15});
    for (const auto& [typed, expected] : table) {
        Date date(1850, 5, 5);
        EXPECT_EQ(set(date, typed), expected != cRefused) << typed;
        EXPECT_EQ(date.Get(), expected != cRefused ? expected : 18500505u) << typed;
    }
}

TEST(Date, ReadsUsText) {
    checkTyped({{" 3 / 7 - 2001 ", 20010307},
                {"3-7-2001", 20010307},
                {"003/00007/002001", 20010307},
                {"6/15/14", 20140615},
                {"6/16/14", 19140616},
                {"1/1/15", 19150101},
                {"2/29/1", cRefused},
                {"2/29/0000", 20000229},
                {"3/7/2001x", cRefused},
                {"3/7/2001/", cRefused},
                {"3/7", cRefused},
                {"3/7/", cRefused},
                {"/7/2001", cRefused},
                {"3//2001", cRefused},
                {"3/-7/2001", cRefused},
                {"3/7--2001", cRefused},
                {"-3/7/2001", cRefused},
                {"3.7.2001", cRefused},
                {"3/7\t/2001", cRefused},
                {"3/7/2001\n", cRefused},
                {"13/7/2001", cRefused},
                {"4294967299/7/2001", cRefused},
                {"3/7/18446744073709553617", cRefused},
                {"3/7/150", cRefused},
                {"3/7/65535", cRefused},
                {"", cRefused},
                {"  ", cRefused},
                {nullptr, cRefused}},
               [](Date& date, const char* typed) { return date.SetUS(typed); });
}

TEST(Date, ReadsLocalText) {
    const auto setLocal = [](Date& date, const char* typed) { return date.SetLocal(typed); };
    const HostServicesScope scope(ordered(dayMonthYear, ".x"));
    checkTyped({{"7.x3.x2001", 20010307},
                {" 7 .x 3 .x 2001 ", 20010307},
                {"7.x3.x01", 20010307},
                {"7.3.2001", cRefused},
                {"7.X3.x2001", cRefused},
                {"7.x3/2001", cRefused},
                {"7/3/2001", cRefused},
                {"7.x3.x2001.x", cRefused},
                {"7.x3.x", cRefused},
                {"7.x3", cRefused},
                {"3.x13.x2001", cRefused},
                {"DD.xMM.xYYYY", cRefused},
                {"", cRefused},
                {nullptr, cRefused}},
               setLocal);
    const HostServicesScope blanksDivide(ordered(yearMonthDay, ""));
    checkTyped({{"2001 3 7", 20010307}, {"20010307", cRefused}}, setLocal);
}

TEST(Date, TheEmptyDate) {
    const HostServicesScope scope(ordered(yearMonthDay, "-"));
    Date empty;
    Date cleared(2001, 3, 7);
    cleared.Clear();
    EXPECT_TRUE(empty == cleared);
    Day got = {1, 1, 1};
    empty.Get(got.year, got.month, got.day);
    EXPECT_EQ(got, Day());
    EXPECT_EQ((std::array{empty.GetYear(), empty.GetMonth(), empty.GetDay()}),
              (std::array{-1, -1, -1}));
    EXPECT_EQ(empty.Get(), 0u);
    EXPECT_EQ(empty.IsValid(), 0);
    EXPECT_EQ(empty.IsLeapYear(), 0);
    EXPECT_EQ(empty.GetAsLocalStr() + empty.GetAsUSStr(), "");
    for (const auto& [a, b] : {std::pair(Date(), Date(2001, 3, 7)), {Date(2001, 3, 7), Date()}}) {
        got = {1, 1, 1};
        a.Minus(b, got.year, got.month, got.day);
        EXPECT_EQ(got, Day());
    }
}

TEST(Date, TheOrderIsThatOfTheDaysBehindTheEmptyDate) {
    Dice dice(3);
    std::vector<Day> days = {Day(), {1800, 1, 1}, {65534, 12, 31}, {1999, 12, 31}, {2000, 1, 1}};
    const std::vector<Day> pool = allDays({1999, 11, 1}, {2001, 2, 28});
    while (days.size() < 250) days.push_back(dice.Pick(pool));
    for (const Day& a : days) {
        for (const Day& b : days) {
            const Date first = a.month ? dateOf(a) : Date();
            const Date second = b.month ? dateOf(b) : Date();
            const std::array found = {first == second, first != second,
                                      first<second, first <= second, first> second,
                                      first >= second};
            ASSERT_EQ(found, (std::array{a == b, a != b, a<b, a <= b, a> b, a >= b}))
                << first.Get() << ' ' << second.Get();
        }
    }
}

TEST(Date, TodayIsWhatTheClockSays) {
    const HostServicesScope scope(CalendarTime{2024, 2, 29, 23, 59, 60});
    Date date;
    date.SetToday();
    EXPECT_EQ(date.Get(), 20240229u);
}

TEST(Date, archives) {
    // 2001 is 0x07D1, 2004 is 0x07D4, 1900 is 0x076C.
    checkArchive(Date(2001, 3, 7), "\xD1\x07\x03\x07",
                 {"\xD1\x07\0\x07", "\xD1\x07\x0D\x07", "\xD1\x07\x03\0", "\xD1\x07\x03\x20",
                  "\xD1\x07\x04\x1F", "\xD1\x07\x02\x1D", "\x6C\x07\x02\x1D", "\xFE\xFF\xFF\xFF"});
    checkArchive(Date(2004, 2, 29), "\xD4\x07\x02\x1D", {});
    checkArchive(Date(), std::string_view("\xFF\xFF\0\0", 4), {});
    Date date(2001, 3, 7);
    EXPECT_EQ(load(date, "\xFF\xFF\x63\x07"), CArchiveException::none);
    EXPECT_EQ(stored(date), std::string("\xFF\xFF\0\0", 4)) << "an empty date has no month";
    const std::unique_ptr<CObject> made(RUNTIME_CLASS(Date)->CreateObject());
    EXPECT_EQ(stored(*made), std::string("\xFF\xFF\0\0", 4));
}

}  // namespace
}  // namespace tessalink::test

#include "platform/files/Locale.h"

#include <gtest/gtest.h>

#include <ctime>

#include "tests/support/HostServicesScope.h"
#include "tests/support/LocaleText.h"

namespace tessalink::test {
namespace {

TEST(Locale, WhatTheHostSaysIsAskedOnceAndKeptUntilServicesAreSet) {
    const HostServicesScope scope(LocaleValues{});
    int calls = 0;
    HostServices services;
    services.localeValues = [&] {
        ++calls;
        LocaleValues values;
        values.dateSeparator.Format("%d", calls);
        return values;
    };
    setHostServices(services);
    EXPECT_EQ(textOf(localeValues()), "[:] 24 [1] MDY");
    EXPECT_EQ(textOf(localeValues()), "[:] 24 [1] MDY");
    EXPECT_EQ(calls, 1);
    setHostServices(services);
    EXPECT_EQ(textOf(localeValues()), "[:] 24 [2] MDY");
    EXPECT_EQ(calls, 2);
}

TEST(Locale, TheClockIsTheHostsOrTheSystems) {
    const HostServicesScope scope(CalendarTime{1999, 12, 31, 23, 59, 60});
    const CalendarTime now = localTime();
    EXPECT_EQ(now.year, 1999);
    EXPECT_EQ(now.month, 12);
    EXPECT_EQ(now.day, 31);
    EXPECT_EQ(now.hour, 23);
    EXPECT_EQ(now.minute, 59);
    EXPECT_EQ(now.second, 60);

    setHostServices({});
    const std::time_t before = std::time(nullptr);
    const CalendarTime shown = localTime();
    std::tm parts{};
    parts.tm_year = shown.year - 1900;
    parts.tm_mon = shown.month - 1;
    parts.tm_mday = shown.day;
    parts.tm_hour = shown.hour;
    parts.tm_min = shown.minute;
    parts.tm_sec = shown.second;
    parts.tm_isdst = -1;
    const std::time_t read = std::mktime(&parts);
    EXPECT_LE(before, read);
    EXPECT_LE(read, std::time(nullptr));
}

}  // namespace
}  // namespace tessalink::test

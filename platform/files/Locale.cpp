#include "platform/files/Locale.h"

#include <langinfo.h>
#include <locale.h>

#include <ctime>
#include <mutex>
#include <optional>

#include "platform/base/HostServices.h"
#include "platform/files/detail/LocaleFormats.h"

namespace tessalink {

namespace {

LocaleValues readSystem() {
    const locale_t locale = ::newlocale(LC_TIME_MASK | LC_NUMERIC_MASK, "", locale_t{});
    if (locale == locale_t{}) return {};
    const auto text = [locale](nl_item item) { return ::nl_langinfo_l(item, locale); };
    LocaleValues values =
        detail::localeOf({text(T_FMT), text(T_FMT_AMPM), text(AM_STR), text(PM_STR), text(D_FMT)});
    // In the locale's own encoding: only what is one character in all of them.
    const CString decimals = text(RADIXCHAR);
    if (decimals == "," || decimals == ".") values.decimalSeparator = decimals;
    ::freelocale(locale);
    return values;
}

struct KeptValues {
    std::mutex mutex;
    std::optional<LocaleValues> values;
};

KeptValues& kept() {
    static KeptValues values;
    return values;
}

void forget() {
    kept().values.reset();
}

}  // namespace

const LocaleValues& localeValues() {
    static const bool listening = (whenHostServicesChange(forget), true);
    static_cast<void>(listening);
    const std::lock_guard lock(kept().mutex);
    std::optional<LocaleValues>& values = kept().values;
    if (!values) {
        const auto& host = hostServices().localeValues;
        values = host ? host() : readSystem();
    }
    return *values;
}

CalendarTime localTime() {
    if (hostServices().clock) return hostServices().clock();
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    ::localtime_r(&now, &parts);
    constexpr int firstYear = 1900;
    return {parts.tm_year + firstYear,
            parts.tm_mon + 1,
            parts.tm_mday,
            parts.tm_hour,
            parts.tm_min,
            parts.tm_sec};
}

}  // namespace tessalink

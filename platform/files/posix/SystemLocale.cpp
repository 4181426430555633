#include "platform/files/detail/SystemLocale.h"

#include <langinfo.h>
#include <locale.h>

#include <ctime>

#include "platform/base/detail/CodePageInForce.h"
#include "platform/files/detail/LocaleFormats.h"

namespace tessalink::detail {

namespace {

/// What the settings of the environment say about one category; false when they name a locale that
/// the system lacks. Each category is asked for alone: a bad setting of one leaves the others good.
class SystemLocale {
public:
    explicit SystemLocale(int category) : m_locale(::newlocale(category, "", locale_t{})) {}
    ~SystemLocale() {
        if (*this) ::freelocale(m_locale);
    }
    SystemLocale(const SystemLocale&) = delete;
    SystemLocale& operator=(const SystemLocale&) = delete;

    explicit operator bool() const { return m_locale != locale_t{}; }
    const char* Text(nl_item item) const { return ::nl_langinfo_l(item, m_locale); }

private:
    locale_t m_locale;
};

}  // namespace

LocaleValues systemLocale() {
    LocaleValues values;
    if (const SystemLocale times(LC_TIME_MASK); times) {
        values = localeOf({times.Text(T_FMT), times.Text(T_FMT_AMPM), times.Text(AM_STR),
                           times.Text(PM_STR), times.Text(D_FMT)});
    }
    if (const SystemLocale numbers(LC_NUMERIC_MASK); numbers) {
        // In the locale's own encoding: only what is one character in all of them.
        const CString decimals = numbers.Text(RADIXCHAR);
        if (decimals == "," || decimals == ".") values.decimalSeparator = decimals;
    }
    return values;
}

// The encodings of locales here say nothing of those of templates.
CodePage systemCodePage() {
    return CodePage::Western;
}

CalendarTime systemTime() {
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

}  // namespace tessalink::detail

#include "platform/files/Locale.h"

#include <mutex>
#include <optional>

#include "platform/base/HostServices.h"
#include "platform/files/detail/SystemLocale.h"

namespace tessalink {

namespace {

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
        values = host ? host() : detail::systemLocale();
    }
    return *values;
}

CalendarTime localTime() {
    if (hostServices().clock) return hostServices().clock();
    return detail::systemTime();
}

}  // namespace tessalink

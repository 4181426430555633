#pragma once

#include <utility>

#include "platform/base/HostServices.h"

namespace tessalink::test {

/// Serves locale values or a clock of the test's own until the end of the scope; the former
/// services are in force again from then on.
class HostServicesScope {
public:
    explicit HostServicesScope(const LocaleValues& values) { Set(values); }
    explicit HostServicesScope(const CalendarTime& now) { Set(now); }
    explicit HostServicesScope(HostServices services) { setHostServices(std::move(services)); }
    ~HostServicesScope() { setHostServices(std::move(m_former)); }
    HostServicesScope(const HostServicesScope&) = delete;
    HostServicesScope& operator=(const HostServicesScope&) = delete;

    void Set(const LocaleValues& values) {
        HostServices services = hostServices();
        services.localeValues = [values] { return values; };
        setHostServices(std::move(services));
    }
    void Set(const CalendarTime& now) {
        HostServices services = hostServices();
        services.clock = [now] { return now; };
        setHostServices(std::move(services));
    }

private:
    HostServices m_former = hostServices();
};

}  // namespace tessalink::test

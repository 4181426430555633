#include "tests/support/Environment.h"

#include <stdlib.h>

#include "platform/base/Types.h"

// Behind the platform's header, which it needs.
#include <psapi.h>

namespace tessalink::test {

void setVariable(const char* name, const char* value) {
    ::_putenv_s(name, value);
}

void removeVariable(const char* name) {
    ::_putenv_s(name, "");
}

long peakMemory() {
    PROCESS_MEMORY_COUNTERS counters{};
    ::K32GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof(counters));
    return static_cast<long>(counters.PeakWorkingSetSize / 1024);
}

}  // namespace tessalink::test

#include "tests/support/Environment.h"

#include <stdlib.h>
#include <sys/resource.h>

namespace tessalink::test {

void setVariable(const char* name, const char* value) {
    ::setenv(name, value, 1);
}

void removeVariable(const char* name) {
    ::unsetenv(name);
}

long peakMemory() {
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

}  // namespace tessalink::test

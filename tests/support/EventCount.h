#pragma once

#include <cstdlib>

namespace tessalink::test {

/// The number of events that an environment variable sets, or another one: a million is the long
/// form of what a short run does.
inline int eventCount(const char* variable, int otherwise) {
    const char* wanted = std::getenv(variable);
    return wanted != nullptr ? std::atoi(wanted) : otherwise;
}

}  // namespace tessalink::test

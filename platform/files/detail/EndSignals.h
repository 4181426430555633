#pragma once

namespace tessalink::detail {

/// Calls the function at the first signal that asks the program to end. The second one ends it.
void catchEndSignals(void (*note)(int signal));

}  // namespace tessalink::detail

#include "platform/base/detail/Terminal.h"

#include <unistd.h>

bool tessalink::detail::standardErrorIsTerminal() {
    return ::isatty(STDERR_FILENO) == 1;
}

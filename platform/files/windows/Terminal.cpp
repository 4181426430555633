#include "platform/base/detail/Terminal.h"

#include <io.h>

bool tessalink::detail::standardErrorIsTerminal() {
    constexpr int standardError = 2;
    return ::_isatty(standardError) != 0;
}

#pragma once

namespace tessalink::detail {

// True when standard error is a terminal. Defined in platform/files, which alone asks the system.
bool standardErrorIsTerminal();

}  // namespace tessalink::detail

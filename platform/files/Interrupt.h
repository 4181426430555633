#pragma once

#include "platform/base/Export.h"

namespace tessalink {

/// Lets SIGINT and SIGTERM, or what the user ends a program with on Windows, ask for an end instead
/// of ending the program, the first time.
class TESSALINK_API Interrupt {
public:
    Interrupt();

    /// The signal that came, or 0.
    static int Signal();
};

}  // namespace tessalink

#pragma once

namespace tessalink::cli {

/// Lets SIGINT and SIGTERM ask for an end instead of ending the program, the first time.
class Interrupt {
public:
    Interrupt();

    /// The signal that came, or 0.
    static int Signal();
};

}  // namespace tessalink::cli

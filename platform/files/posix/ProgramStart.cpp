#include "platform/files/ProgramStart.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace tessalink {

std::vector<std::string> startProgram(int argc, char** argv) {
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = ::open("/dev/null", O_RDONLY);
    }
    if (descriptor > STDERR_FILENO) ::close(descriptor);
    ::signal(SIGXFSZ, SIG_IGN);
    return {argv, argv + argc};
}

}  // namespace tessalink

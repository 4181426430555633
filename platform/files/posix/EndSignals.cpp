#include "platform/files/detail/EndSignals.h"

#include <signal.h>

#include <initializer_list>

namespace tessalink::detail {

void catchEndSignals(void (*note)(int signal)) {
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (const int signal : {SIGINT, SIGTERM}) ::sigaction(signal, &action, nullptr);
}

}  // namespace tessalink::detail

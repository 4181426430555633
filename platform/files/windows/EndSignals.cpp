#include "platform/files/detail/EndSignals.h"

#include <signal.h>

#include <initializer_list>

namespace tessalink::detail {

// The system forgets the handler when it calls it.
void catchEndSignals(void (*note)(int signal)) {
    for (const int signal : {SIGINT, SIGTERM, SIGBREAK}) ::signal(signal, note);
}

}  // namespace tessalink::detail

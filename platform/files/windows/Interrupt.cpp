#include "platform/files/Interrupt.h"

#include <signal.h>

#include <initializer_list>

namespace tessalink {

namespace {

volatile sig_atomic_t lastSignal = 0;

// The system forgets the handler when it calls it, so that the second time ends the program.
void note(int signal) {
    lastSignal = signal;
}

}  // namespace

Interrupt::Interrupt() {
    for (const int signal : {SIGINT, SIGTERM, SIGBREAK}) ::signal(signal, note);
}

int Interrupt::Signal() {
    return lastSignal;
}

}  // namespace tessalink

#include "platform/files/Interrupt.h"

#include <signal.h>

#include <initializer_list>

namespace tessalink {

namespace {

volatile sig_atomic_t lastSignal = 0;

void note(int signal) {
    lastSignal = signal;
}

}  // namespace

Interrupt::Interrupt() {
    struct sigaction action = {};
    action.sa_handler = note;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (const int signal : {SIGINT, SIGTERM}) ::sigaction(signal, &action, nullptr);
}

int Interrupt::Signal() {
    return lastSignal;
}

}  // namespace tessalink

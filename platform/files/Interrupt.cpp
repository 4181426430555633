#include "platform/files/Interrupt.h"

#include <csignal>

#include "platform/files/detail/EndSignals.h"

namespace tessalink {

namespace {

volatile std::sig_atomic_t lastSignal = 0;

void note(int signal) {
    lastSignal = signal;
}

}  // namespace

Interrupt::Interrupt() {
    detail::catchEndSignals(note);
}

int Interrupt::Signal() {
    return lastSignal;
}

}  // namespace tessalink

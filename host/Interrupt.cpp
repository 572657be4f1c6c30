// See the header.
#include "host/Interrupt.h"

namespace tzhost {
namespace {

// A signal handler can reach nothing else.
volatile std::sig_atomic_t interruptSeen = 0;  // NOLINT(readability-identifier-naming)

extern "C" void noteInterrupt(int /*signal*/) {
    interruptSeen = 1;
}

}  // namespace

InterruptScope::InterruptScope() {
    interruptSeen = 0;
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &previous_);
}

InterruptScope::~InterruptScope() {
    sigaction(SIGINT, &previous_, nullptr);
    interruptSeen = 0;
}

bool interrupted() {
    return interruptSeen != 0;
}

}  // namespace tzhost

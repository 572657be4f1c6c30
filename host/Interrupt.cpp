// See the header.
#include "host/Interrupt.h"

#include <atomic>
#include <csignal>
#include <mutex>

namespace tzhost {
namespace {

// A signal handler can reach nothing else; an atomic without a lock is safe in one.
std::atomic<bool> interruptSeen{false};  // NOLINT(readability-identifier-naming)
static_assert(std::atomic<bool>::is_always_lock_free);

// The signal's handling belongs to the process: the first scope takes it over, the last one gives it back.
struct Takeover {
    std::mutex lock;  // guards the rest
    int scopes = 0;
    struct sigaction previous {};
};

Takeover& takeover() {
    static Takeover instance;
    return instance;
}

extern "C" void noteInterrupt(int /*signal*/) {
    interruptSeen = true;
}

}  // namespace

InterruptScope::InterruptScope() {
    const std::lock_guard guard(takeover().lock);
    if (takeover().scopes++ > 0) return;
    interruptSeen = false;
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &takeover().previous);
}

InterruptScope::~InterruptScope() {
    const std::lock_guard guard(takeover().lock);
    if (--takeover().scopes > 0) return;
    sigaction(SIGINT, &takeover().previous, nullptr);
    interruptSeen = false;
}

bool interrupted() {
    return interruptSeen;
}

}  // namespace tzhost

#include "host/commands/Interrupts.h"

#include <unistd.h>

#include <atomic>
#include <csignal>
#include <string_view>

#include "host/io/UnfinishedFiles.h"

namespace tzhost {
namespace {

// A signal handler can reach nothing else; an atomic without a lock is safe in one.
std::atomic<int> signalSeen{0};  // NOLINT(readability-identifier-naming)
// Whether the work ends by itself, once such a signal is seen.
std::atomic<bool> endsAtCtrlC{false};   // NOLINT(readability-identifier-naming)
std::atomic<bool> endsAtOthers{false};  // NOLINT(readability-identifier-naming)
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

extern "C" void onInterrupt(int signal) {
    if (signalSeen.exchange(signal) == 0 && (signal == SIGINT ? endsAtCtrlC : endsAtOthers)) return;
    removeUnfinishedFiles();
    constexpr std::string_view kLine = "tzhost: interrupted\n";
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, kLine.data(), kLine.size());
    _exit(exitStatusOf(signal));
}

}  // namespace

void handleInterrupts() {
    struct sigaction action {};
    action.sa_handler = onInterrupt;
    action.sa_flags = static_cast<int>(SA_RESTART);
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction before {};
        sigaction(signal, &action, &before);
        // `nohup` means that the program goes on.
        if (signal == SIGHUP && before.sa_handler == SIG_IGN) sigaction(signal, &before, nullptr);
    }
}

int interruptSignal() noexcept {
    return signalSeen;
}

InterruptScope::InterruptScope(Signals signals) {
    endsAtCtrlC = true;
    endsAtOthers = signals == Signals::kAll;
}

InterruptScope::~InterruptScope() {
    endsAtCtrlC = endsAtOthers = false;
}

}  // namespace tzhost

// See the header.
#include "host/LateNotice.h"

#include <sys/time.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>

namespace tzhost {
namespace {

// What becomes of the notice. A signal handler can reach nothing else than statics.
enum class State { kNone, kPrepared, kPending, kBeingWritten, kWritten };
std::atomic<State> state{State::kNone};  // NOLINT(readability-identifier-naming)
static_assert(std::atomic<State>::is_always_lock_free);

// Belongs to the notice that took the state away from kNone; the handler reads it from kPending on.
struct Line {
    std::array<char, 256> text;
    size_t size;
};
Line line;  // NOLINT(readability-identifier-naming)

extern "C" void writeNotice(int /*signal*/) {
    State expected = State::kPending;
    if (!state.compare_exchange_strong(expected, State::kBeingWritten)) return;  // dismissed meanwhile
    const int error = errno;
    [[maybe_unused]] const ssize_t written = write(STDERR_FILENO, line.text.data(), line.size);
    errno = error;
    state = State::kWritten;
}

// The handler stays: taken back, a signal that is on its way to another thread would end the program.
bool handleAlarm() {
    struct sigaction present {};
    if (sigaction(SIGALRM, nullptr, &present) != 0) return false;
    if (present.sa_handler == writeNotice) return true;
    if (present.sa_handler != SIG_DFL) return false;
    struct sigaction action {};
    action.sa_handler = writeNotice;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    return sigaction(SIGALRM, &action, nullptr) == 0;
}

void setTimer(std::chrono::milliseconds after) {
    itimerval timer{};
    timer.it_value.tv_sec = after.count() / 1000;
    timer.it_value.tv_usec = after.count() % 1000 * 1000;
    setitimer(ITIMER_REAL, &timer, nullptr);
}

}  // namespace

LateNotice::LateNotice(std::string_view text, std::chrono::milliseconds after) noexcept {
    State expected = State::kNone;
    if (!state.compare_exchange_strong(expected, State::kPrepared)) return;
    if (!handleAlarm()) {
        state = State::kNone;
        return;
    }
    line.size = std::min(text.size(), line.text.size());
    std::copy_n(text.data(), line.size, line.text.data());
    pending_ = true;
    state = State::kPending;
    setTimer(after);
}

bool LateNotice::dismiss() noexcept {
    if (!pending_) return written_;
    pending_ = false;
    State expected = State::kPending;
    if (!state.compare_exchange_strong(expected, State::kPrepared)) {
        while (state != State::kWritten) {  // another thread has the signal, and a few bytes to write
        }
        written_ = true;
    }
    setTimer(std::chrono::milliseconds(0));
    state = State::kNone;
    return written_;
}

}  // namespace tzhost

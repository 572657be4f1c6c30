// See the header.
#include "host/Monitor.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "host/Interrupt.h"
#include "host/Utf8.h"

namespace tzhost {
namespace {

using namespace std::chrono_literals;

// Work is long when it takes more than a moment. Where nobody watches a bar move, a line now and then is
// enough.
constexpr auto kBarAfter = 500ms;
constexpr auto kBarEvery = 100ms;
constexpr auto kLineAfter = 2s;
constexpr auto kLineEvery = 5s;

// Looking at the clock costs more than a step.
constexpr uint32_t kStepsPerLook = 256;

constexpr int kBarWidth = 40;
constexpr const char* kBarFull = "########################################";
constexpr const char* kBarEmpty = "........................................";

}  // namespace

Monitor::Monitor(std::shared_ptr<HostCore> core, const std::string& title, uint64_t cancelAfter)
    : HostObject(std::move(core), "monitor"),
      title_(toOneLine(title, 60)),
      cancelAfter_(cancelAfter),
      onTerminal_(isatty(STDERR_FILENO) == 1),
      nextShow_(Clock::now() + (onTerminal_ ? Clock::duration(kBarAfter) : Clock::duration(kLineAfter))) {}

TzResult Monitor::initialise(uint64_t stepCount) noexcept {
    return onHostThread("ITzMonitor::initialise", [&] { count_ = stepCount; });
}

TzResult Monitor::step(uint32_t steps) noexcept {
    return onHostThread("ITzMonitor::step", [&] {
        done_ += steps;
        if (stepsUntilLook_ == 0) {
            stepsUntilLook_ = kStepsPerLook;
            const Clock::time_point now = Clock::now();
            if (now >= nextShow_) show(now);
        }
        --stepsUntilLook_;
        cancelled_ = cancelled_ || interrupted() || (cancelAfter_ != 0 && done_ >= cancelAfter_);
        return cancelled_ ? kTzCancelled : kTzOk;
    });
}

void Monitor::show(Clock::time_point now) noexcept {
    const double share =
        count_ == 0 ? 0.0 : std::min(1.0, static_cast<double>(done_) / static_cast<double>(count_));
    const int percent = static_cast<int>(share * 100.0);
    if (onTerminal_) {
        const int full = static_cast<int>(share * kBarWidth);
        std::fprintf(stderr, "\r%s [%.*s%.*s] %3d%%", title_.c_str(), full, kBarFull, kBarWidth - full,
                     kBarEmpty, percent);
        std::fflush(stderr);
        barShown_ = true;
        nextShow_ = now + kBarEvery;
    } else {
        std::fprintf(stderr, "%s %d%%\n", title_.c_str(), percent);
        nextShow_ = now + kLineEvery;
    }
}

void Monitor::close() noexcept {
    if (!barShown_) return;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
    barShown_ = false;
}

}  // namespace tzhost

// See the header.
#include "host/Progress.h"

#include <unistd.h>

#include <algorithm>
#include <cstdio>

#include "host/Utf8.h"

namespace tzhost {
namespace {

using namespace std::chrono_literals;

// Work is long when it takes more than a moment. Where nobody watches a bar move, a line now and then is
// enough.
constexpr std::chrono::milliseconds kBarAfter = 500ms;
constexpr auto kBarEvery = 100ms;
constexpr std::chrono::milliseconds kLineAfter = 2s;
constexpr auto kLineEvery = 5s;

// Looking at the clock costs more than a step.
constexpr uint32_t kStepsPerLook = 256;

constexpr int kBarWidth = 40;
constexpr const char* kBarFull = "########################################";
constexpr const char* kBarEmpty = "........................................";

}  // namespace

Progress::Progress(std::string_view title, uint64_t count)
    : onTerminal_(isatty(STDERR_FILENO) == 1),
      title_(toOneLine(title, 60)),
      count_(count),
      nextShow_(Clock::now() + (onTerminal_ ? kBarAfter : kLineAfter)),
      notice_(onTerminal_ ? "\r" + title_ + " ..." : title_ + " ...\n",
              onTerminal_ ? kBarAfter : kLineAfter) {}

void Progress::look() noexcept {
    stepsUntilLook_ = kStepsPerLook;
    const Clock::time_point now = Clock::now();
    endNotice(now);
    if (now < nextShow_) return;
    show();
    nextShow_ = now + (onTerminal_ ? Clock::duration(kBarEvery) : Clock::duration(kLineEvery));
}

void Progress::close() noexcept {
    endNotice({});
    if (!toErase_) return;
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
    toErase_ = false;
}

// The count says more from here on.
void Progress::endNotice(Clock::time_point now) noexcept {
    if (noticeEnded_) return;
    noticeEnded_ = true;
    if (!notice_.dismiss()) return;
    toErase_ = onTerminal_;
    if (!onTerminal_) nextShow_ = now + kLineEvery;
}

void Progress::show() noexcept {
    if (count_ == 0) {
        std::fprintf(stderr, onTerminal_ ? "\r%s ..." : "%s ...\n", title_.c_str());
    } else {
        const double share = std::min(1.0, static_cast<double>(done_) / static_cast<double>(count_));
        const int percent = static_cast<int>(share * 100.0);
        const int full = static_cast<int>(share * kBarWidth);
        if (onTerminal_) {
            std::fprintf(stderr, "\r%s [%.*s%.*s] %3d%%", title_.c_str(), full, kBarFull, kBarWidth - full,
                         kBarEmpty, percent);
        } else {
            std::fprintf(stderr, "%s %d%%\n", title_.c_str(), percent);
        }
    }
    std::fflush(stderr);
    toErase_ = onTerminal_;
}

}  // namespace tzhost

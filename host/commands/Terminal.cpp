#include "host/commands/Terminal.h"

#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <system_error>
#include <thread>

#include "host/commands/Interrupts.h"
#include "host/core/OperationError.h"
#include "host/core/Utf8.h"

namespace tzhost {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

// Where nobody watches a bar move, a line now and then is enough.
constexpr std::chrono::milliseconds kBarAfter = 500ms;
constexpr auto kBarEvery = 100ms;
constexpr std::chrono::milliseconds kLineAfter = 2s;
constexpr auto kLineEvery = 5s;

constexpr int kBarWidth = 40;
constexpr const char* kBarFull = "########################################";
constexpr const char* kBarEmpty = "........................................";

// Writes a text to stderr after some time, unless it is dismissed before: the title of work that is slow to
// make its first step. It has a thread of its own, since the thread that works may be in a long call of a
// module.
class DelayedText {
  public:
    DelayedText(std::string text, std::chrono::milliseconds after) : text_(std::move(text)) {
        try {
            waiting_ = std::thread([this, after] { wait(after); });
        } catch (const std::system_error&) {
            // Without a thread there is no text; the work goes on.
        }
    }
    ~DelayedText() { dismiss(); }
    DelayedText(const DelayedText&) = delete;
    DelayedText& operator=(const DelayedText&) = delete;

    // From now on it is not written any more. Returns whether it has been.
    bool dismiss() noexcept {
        if (waiting_.joinable()) {
            {
                const std::lock_guard held(lock_);
                dismissed_ = true;
            }
            changed_.notify_one();
            waiting_.join();
        }
        return written_;
    }

  private:
    void wait(std::chrono::milliseconds after) noexcept {
        std::unique_lock held(lock_);
        if (changed_.wait_for(held, after, [this] { return dismissed_; })) return;
        std::fputs(text_.c_str(), stderr);
        std::fflush(stderr);
        written_ = true;
    }

    const std::string text_;
    std::mutex lock_;  // guards the flags
    std::condition_variable changed_;
    bool dismissed_ = false;
    bool written_ = false;
    std::thread waiting_;
};

class ProgressBar : public Observer::Work {
  public:
    ProgressBar(std::string title, bool isTerminal)
        : isTerminal_(isTerminal),
          title_(std::move(title)),
          nextShow_(Clock::now() + (isTerminal_ ? kBarAfter : kLineAfter)),
          untilFirstStep_(isTerminal_ ? "\r" + title_ + " ..." : title_ + " ...\n",
                          isTerminal_ ? kBarAfter : kLineAfter) {}

    // Leaves no bar behind.
    ~ProgressBar() override {
        dismissTitle({});
        if (!toErase_) return;
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
    }
    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    void update(uint64_t done, uint64_t count) noexcept override {
        const Clock::time_point now = Clock::now();
        dismissTitle(now);
        if (now < nextShow_) return;
        show(done, count);
        nextShow_ = now + (isTerminal_ ? Clock::duration(kBarEvery) : Clock::duration(kLineEvery));
    }

  private:
    void dismissTitle(Clock::time_point now) noexcept {
        if (titleDismissed_) return;
        titleDismissed_ = true;
        if (!untilFirstStep_.dismiss()) return;
        toErase_ = isTerminal_;
        if (!isTerminal_) nextShow_ = now + kLineEvery;
    }

    void show(uint64_t done, uint64_t count) noexcept {
        if (count == 0) {
            std::fprintf(stderr, isTerminal_ ? "\r%s ..." : "%s ...\n", title_.c_str());
        } else {
            const double share = std::min(1.0, static_cast<double>(done) / static_cast<double>(count));
            const int percent = static_cast<int>(share * 100.0);
            const int full = static_cast<int>(share * kBarWidth);
            if (isTerminal_) {
                std::fprintf(stderr, "\r%s [%.*s%.*s] %3d%%", title_.c_str(), full, kBarFull,
                             kBarWidth - full, kBarEmpty, percent);
            } else {
                std::fprintf(stderr, "%s %d%%\n", title_.c_str(), percent);
            }
        }
        std::fflush(stderr);
        toErase_ = isTerminal_;
    }

    const bool isTerminal_;
    const std::string title_;
    bool titleDismissed_ = false;
    bool toErase_ = false;
    Clock::time_point nextShow_;
    DelayedText untilFirstStep_;
};

}  // namespace

Terminal::Terminal(bool isQuiet) : isQuiet_(isQuiet), isTerminal_(isatty(STDERR_FILENO) == 1) {}

void Terminal::setSubject(const std::string& fileName) {
    subject_ = fileName.empty() ? "" : toOneLine(fileName) + ": ";
}

std::unique_ptr<Observer::Work> Terminal::begin(const std::string& title) {
    if (isQuiet_ || !showsProgress_) return nullptr;
    return std::make_unique<ProgressBar>(toOneLine(title, 60), isTerminal_);
}

bool Terminal::cancelled() noexcept {
    return interruptSignal() != 0;
}

void Terminal::message(const std::string& text) {
    if (messagesHeld_ == 0) warn(subject_ + text);
}

void Terminal::note(const std::string& text) const {
    if (isQuiet_) return;
    clearBar();
    std::fprintf(stderr, "%s\n", text.c_str());
}

void Terminal::clearBar() const {
    if (isTerminal_) std::fputs("\r\033[K", stderr);
}

void Terminal::log(const LogLine& line) {
    if (logSink_) logSink_(line.text);
}

void requirePrinted() {
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0)
        throw OperationError("standard output", "write", kTzFailed);
}

}  // namespace tzhost

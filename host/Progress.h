// How far long work is, on stderr: on a terminal a bar, elsewhere a line now and then, and nothing at all for
// work that takes no longer than a moment. One stands around every piece of work that can take long.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "host/LateNotice.h"

namespace tzhost {

class Progress {
  public:
    // `title` says what is done ("saving a.svg"). The work has `count` steps; as long as none is made, or
    // without a count, the title alone is shown.
    explicit Progress(std::string_view title, uint64_t count = 0);
    ~Progress() { close(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void setCount(uint64_t count) noexcept { count_ = count; }

    // Cheap enough for every point and polygon.
    void step(uint64_t steps = 1) noexcept {
        done_ += steps;
        if (--stepsUntilLook_ == 0) look();
    }

    // Shows what is due. Called after steps that are few and long.
    void look() noexcept;

    // The work is over: leaves no bar behind.
    void close() noexcept;

  private:
    using Clock = std::chrono::steady_clock;

    void show() noexcept;
    void endNotice(Clock::time_point now) noexcept;

    const bool onTerminal_;
    const std::string title_;
    uint64_t count_;
    uint64_t done_ = 0;
    uint32_t stepsUntilLook_ = 1;
    bool noticeEnded_ = false;
    bool toErase_ = false;
    Clock::time_point nextShow_;
    LateNotice notice_;  // shown until the first step
};

}  // namespace tzhost

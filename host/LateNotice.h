// One line on stderr about work that takes longer than a moment, where nobody comes by to count it: a module
// that is deep in a call. Used by Progress.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace tzhost {

class LateNotice {
  public:
    // The text is written as it is, after that time.
    LateNotice(std::string text, std::chrono::milliseconds after);
    ~LateNotice() { dismiss(); }
    LateNotice(const LateNotice&) = delete;
    LateNotice& operator=(const LateNotice&) = delete;

    // From now on it is not written any more. Answers whether it has been.
    bool dismiss() noexcept;

  private:
    void wait(std::chrono::milliseconds after) noexcept;

    const std::string text_;
    std::mutex lock_;  // guards the flags
    std::condition_variable changed_;
    bool dismissed_ = false;
    bool written_ = false;
    std::thread waiting_;
};

}  // namespace tzhost

// One line on stderr about work that takes longer than a moment, where nobody comes by to count it: a module
// that is deep in a call. A timer's signal writes it, so that no thread has to wait. Used by Progress.
#pragma once

#include <chrono>
#include <string_view>

namespace tzhost {

class LateNotice {
  public:
    // The text is written as it is, after that time. The process has one such timer: while another notice has
    // it, or when the alarm signal belongs to somebody else, this one is never written.
    LateNotice(std::string_view text, std::chrono::milliseconds after) noexcept;
    ~LateNotice() { dismiss(); }
    LateNotice(const LateNotice&) = delete;
    LateNotice& operator=(const LateNotice&) = delete;

    // From now on it is not written any more. Answers whether it has been.
    bool dismiss() noexcept;

  private:
    bool pending_ = false;
    bool written_ = false;
};

}  // namespace tzhost

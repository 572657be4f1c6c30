// See the header.
#include "host/LateNotice.h"

#include <cstdio>
#include <system_error>

namespace tzhost {

LateNotice::LateNotice(std::string text, std::chrono::milliseconds after) : text_(std::move(text)) {
    try {
        waiting_ = std::thread([this, after] { wait(after); });
    } catch (const std::system_error&) {
        // No thread, no notice: the work is none the worse for it.
    }
}

bool LateNotice::dismiss() noexcept {
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

void LateNotice::wait(std::chrono::milliseconds after) noexcept {
    std::unique_lock held(lock_);
    if (changed_.wait_for(held, after, [this] { return dismissed_; })) return;
    std::fputs(text_.c_str(), stderr);
    std::fflush(stderr);
    written_ = true;
}

}  // namespace tzhost

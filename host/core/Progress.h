// Counts the steps of long work and tells the observer now and then. One stands around every piece of work
// that can take long.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "host/core/Observer.h"

namespace tzhost {

class Progress {
  public:
    // The title is for Observer::begin(). As long as no step is made, the observer is told no more than that.
    Progress(Observer& observer, const std::string& title, uint64_t count = 0)
        : work_(observer.begin(title)), count_(count) {}
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void setCount(uint64_t count) noexcept { count_ = count; }

    // Cheap enough for every point and polygon.
    void step(uint64_t steps = 1) noexcept {
        done_ += steps;
        if (--stepsUntilUpdate_ == 0) update();
    }

    // Tells the observer now. Called after steps that are few and long.
    void update() noexcept {
        stepsUntilUpdate_ = kStepsPerUpdate;
        if (work_) work_->update(done_, count_);
    }

    // The work has ended.
    void close() noexcept { work_.reset(); }

  private:
    static constexpr uint32_t kStepsPerUpdate = 256;

    std::unique_ptr<Observer::Work> work_;
    uint64_t count_;
    uint64_t done_ = 0;
    uint32_t stepsUntilUpdate_ = 1;
};

}  // namespace tzhost

// See the header.
#include "host/Monitor.h"

#include "host/Interrupt.h"

namespace tzhost {

Monitor::Monitor(std::shared_ptr<HostCore> core, const std::string& title, uint64_t cancelAfter)
    : HostObject(std::move(core), "monitor"), cancelAfter_(cancelAfter), progress_(title) {}

TzResult Monitor::initialise(uint64_t stepCount) noexcept {
    return onHostThread("ITzMonitor::initialise", [&] { progress_.setCount(stepCount); });
}

TzResult Monitor::step(uint32_t steps) noexcept {
    return onHostThread("ITzMonitor::step", [&] {
        done_ += steps;
        progress_.step(steps);
        cancelled_ = cancelled_ || interrupted() || (cancelAfter_ != 0 && done_ >= cancelAfter_);
        return cancelled_ ? kTzCancelled : kTzOk;
    });
}

}  // namespace tzhost

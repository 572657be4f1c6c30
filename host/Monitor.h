// The monitor that an import reports to: a bar on the terminal, Ctrl-C, and the cancel of `--cancel-after`.
// Made by the import for one load.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>

#include "host/HostCore.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzSceneLoader.h"

namespace tzhost {

class Monitor : public HostObject, public ITzMonitor {
  public:
    TzResult initialise(uint64_t stepCount) noexcept override;
    TzResult step(uint32_t steps) noexcept override;

    // Whether a step has reported a cancel.
    bool cancelled() const { return cancelled_; }

    // Before each step of work whose steps are few and long: the bar is brought up to date with the step.
    void lookAtNextStep() noexcept { stepsUntilLook_ = 0; }

    // Ends the bar, if one is shown.
    void close() noexcept;

  protected:
    // `title` stands before the bar. The step of number `cancelAfter` answers kTzCancelled, and all after it;
    // 0: none does.
    Monitor(std::shared_ptr<HostCore> core, const std::string& title, uint64_t cancelAfter);
    ~Monitor() { close(); }

  private:
    using Clock = std::chrono::steady_clock;

    void show(Clock::time_point now) noexcept;

    const std::string title_;
    const uint64_t cancelAfter_;
    const bool onTerminal_;
    uint64_t count_ = 0;
    uint64_t done_ = 0;
    uint32_t stepsUntilLook_ = 0;
    bool cancelled_ = false;
    bool barShown_ = false;
    Clock::time_point nextShow_;
};

using MonitorPtr = CTzPtr<CTzPolymorph<Monitor, ITzMonitor>>;

}  // namespace tzhost

// The monitor that an import reports to: its progress, Ctrl-C, and the cancel of `--cancel-after`. Made by
// the import for one load.
#pragma once

#include <cstdint>
#include <string>

#include "host/HostCore.h"
#include "host/Progress.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzSceneLoader.h"

namespace tzhost {

class Monitor : public HostObject, public ITzMonitor {
  public:
    TzResult initialise(uint64_t stepCount) noexcept override;
    TzResult step(uint32_t steps) noexcept override;

    // Whether a step has reported a cancel.
    bool cancelled() const { return cancelled_; }

    // The load is over, whoever still holds the monitor.
    void close() noexcept { progress_.close(); }

  protected:
    // `title` is the progress's. The step of number `cancelAfter` answers kTzCancelled, and all after it;
    // 0: none does.
    Monitor(std::shared_ptr<HostCore> core, const std::string& title, uint64_t cancelAfter);
    ~Monitor() = default;

  private:
    const uint64_t cancelAfter_;
    uint64_t done_ = 0;
    bool cancelled_ = false;
    Progress progress_;
};

using MonitorPtr = CTzPtr<CTzPolymorph<Monitor, ITzMonitor>>;

}  // namespace tzhost

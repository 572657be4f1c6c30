// What all objects of one host share, and the base of those objects. It lives until the last of them is gone,
// so that an object that a module failed to release stays safe to call.
#pragma once

#include <memory>

#include "host/core/Observer.h"
#include "host/core/ServerTable.h"
#include "host/core/ServiceGate.h"

namespace tzhost {

class Progress;

struct HostCore {
    explicit HostCore(std::shared_ptr<Observer> told) : observer(std::move(told)) {}

    const std::shared_ptr<Observer> observer;  // never null
    ServiceGate gate;
    ServerTable servers;
    // Set while a scene is being saved: steps for every polygon that the saver reads. Host thread only.
    Progress* polygonReads = nullptr;
};

// The base of everything that the host makes with CTzPolymorph: the gate counts it while it lives.
class HostObject {
  public:
    HostObject(const HostObject&) = delete;
    HostObject& operator=(const HostObject&) = delete;

  protected:
    // `kind` names it in reports ("item"); static storage.
    HostObject(std::shared_ptr<HostCore> core, const char* kind) : core_(std::move(core)), kind_(kind) {
        core_->gate.objectMade(kind_);
    }
    ~HostObject() { core_->gate.objectGone(kind_); }

    HostCore& core() const { return *core_; }
    const std::shared_ptr<HostCore>& sharedCore() const { return core_; }

    template <class Work>
    TzResult onHostThread(const char* operation, Work&& work) const noexcept {
        return core_->gate.onHostThread(operation, std::forward<Work>(work));
    }
    template <class Work>
    TzResult onAnyThread(const char* operation, Work&& work) const noexcept {
        return core_->gate.onAnyThread(operation, std::forward<Work>(work));
    }

  private:
    std::shared_ptr<HostCore> core_;
    const char* kind_;
};

}  // namespace tzhost

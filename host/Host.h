// One host: its state, and the object through which modules reach its services. The thread that makes it is
// its host thread. A process may have several.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "host/core/HostCore.h"
#include "host/scene/Scene.h"
#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzHost.h"

namespace tzhost {

class Host {
  public:
    // Without an observer, progress, messages and log lines are dropped and nothing is ever cancelled.
    explicit Host(std::shared_ptr<Observer> observer = nullptr);
    // Releases the servers, which hold references to the host.
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    // The host as modules see it.
    ITzHost* object() const { return object_.get(); }

    ServiceGate& gate() const { return core_->gate; }
    ServerTable& servers() const { return core_->servers; }
    Observer& observer() const { return *core_->observer; }
    const std::shared_ptr<HostCore>& core() const { return core_; }

    // A new, empty scene.
    ScenePtr makeScene() const;

    // Objects of the host that others still hold references to, a text each. Empty at the unload of a correct
    // module, when scenes and monitors are gone.
    std::vector<std::string> foreignReferences() const;

  private:
    struct Service {
        const char* id;
        CTzPtr<ITzObject> object;
    };
    class Object;

    static std::vector<Service> makeServices(const std::shared_ptr<HostCore>& core);

    std::shared_ptr<HostCore> core_;
    std::shared_ptr<const std::vector<Service>> services_;
    CTzPtr<ITzHost> object_;
};

}  // namespace tzhost

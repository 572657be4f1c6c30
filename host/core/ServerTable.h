// The servers that modules have registered, in registration order. Filled through the registry service; read
// by the import, by items that get packages, and by `tzhost servers`. May be used from any thread.
#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "hostsdk/CTzError.h"
#include "hostsdk/CTzPtr.h"
#include "hostsdk/ITzHost.h"

namespace tzhost {

struct Server {
    std::string name;
    CTzPtr<ITzServerFactory> factory;
};

// Interfaces and tags of a server as it reports them, in its order.
struct ServerDescription {
    std::vector<std::string> interfaces;
    std::vector<std::pair<std::string, std::string>> tags;
};
ServerDescription describe(const Server& server);

class ServerTable {
  public:
    // Throws kTzExists when the name is taken.
    void add(std::string_view name, CTzPtr<ITzServerFactory> factory);

    // Throws kTzNotFound when there is no server of that name, or what its factory answers.
    void spawn(std::string_view name, const char* interfaceId, void** out) const;

    template <class Interface>
    CTzPtr<Interface> spawn(std::string_view name) const {
        void* out = nullptr;
        spawn(name, Interface::kId, &out);
        return CTzPtr<Interface>::adopt(static_cast<Interface*>(out));
    }

    // The first server, in registration order, that has the interface and that `accept(object)` takes; null
    // when there is none. Throws what a factory answers, and what `accept` throws.
    template <class Interface, class Accept>
    CTzPtr<Interface> find(Accept&& accept) const {
        for (const Server& server : servers()) {
            void* out = nullptr;
            const TzResult spawned = server.factory->spawn(Interface::kId, &out);
            if (spawned == kTzNoInterface) continue;  // a server of another kind
            tzCheck(spawned);
            auto object = CTzPtr<Interface>::adopt(static_cast<Interface*>(out));
            if (accept(*object)) return object;
        }
        return {};
    }

    std::vector<Server> servers() const;

    // Releases all factories, the last registered first.
    void forget();

  private:
    CTzPtr<ITzServerFactory> factory(std::string_view name) const;

    mutable std::mutex mutex_;  // guards servers_; never held while a module's code runs
    std::vector<Server> servers_;
};

}  // namespace tzhost

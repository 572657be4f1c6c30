// The service ITzServerRegistry: the server table as modules see it.
#include "host/core/Utf8.h"
#include "host/services/Services.h"
#include "hostsdk/CTzPolymorph.h"

namespace tzhost {
namespace {

class ServerRegistryService : public HostObject, public ITzServerRegistry {
  public:
    explicit ServerRegistryService(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzServerRegistry") {}

    TzResult addServer(TzText name, ITzServerFactory* factory) noexcept override {
        return onAnyThread("ITzServerRegistry::addServer", [&] {
            const std::string_view text = checkedText(name);
            if (text.empty() || !factory) throw CTzError(kTzInvalidArgument);
            core().servers.add(text, CTzPtr<ITzServerFactory>::share(factory));
        });
    }

    TzResult spawn(TzText name, const char* interfaceId, void** out) noexcept override {
        if (out) *out = nullptr;
        return onAnyThread("ITzServerRegistry::spawn", [&] {
            if (!interfaceId || !out) throw CTzError(kTzInvalidArgument);
            core().servers.spawn(checkedText(name), interfaceId, out);
        });
    }
};

}  // namespace

CTzPtr<ITzObject> makeServerRegistry(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<ServerRegistryService, ITzServerRegistry>::create(core).query<ITzObject>();
}

}  // namespace tzhost

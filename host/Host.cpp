#include "host/Host.h"

#include <cstring>
#include <utility>

#include "host/services/Services.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzLog.h"
#include "hostsdk/ITzMessages.h"
#include "hostsdk/ITzServices.h"

namespace tzhost {
namespace {

// How many references an object has besides the one that is held here.
uint32_t otherReferences(ITzObject* object) {
    object->retain();
    return object->release() - 1;
}

void report(std::vector<std::string>& reports, const std::string& what, uint32_t references) {
    if (references == 0) return;
    reports.push_back(what + ": " + std::to_string(references) +
                      (references == 1 ? " reference" : " references") + " not released");
}

}  // namespace

class Host::Object : public HostObject, public ITzHost {
  public:
    Object(std::shared_ptr<HostCore> core, std::shared_ptr<const std::vector<Service>> services)
        : HostObject(std::move(core), "host"), services_(std::move(services)) {}

    TzResult service(const char* interfaceId, void** out) noexcept override {
        if (out) *out = nullptr;
        return onAnyThread("ITzHost::service", [&] {
            if (!interfaceId || !out) return kTzInvalidArgument;
            for (const Service& service : *services_) {
                if (std::strcmp(service.id, interfaceId) == 0) return service.object->query(interfaceId, out);
            }
            return kTzNoInterface;
        });
    }

  private:
    std::shared_ptr<const std::vector<Service>> services_;
};

std::vector<Host::Service> Host::makeServices(const std::shared_ptr<HostCore>& core) {
    LogServices log = makeLogServices(core);
    return {
        {ITzServerRegistry::kId, makeServerRegistry(core)}, {ITzLogService::kId, std::move(log.service)},
        {ITzLogWriter::kId, std::move(log.writer)},         {ITzMessages::kId, makeMessageService(core)},
        {ITzImageService::kId, makeImageService(core)},     {ITzTypeService::kId, makeTypeService(core)},
        {ITzThreadService::kId, makeThreadService(core)},
    };
}

Host::Host(std::shared_ptr<Observer> observer)
    : core_(std::make_shared<HostCore>(observer ? std::move(observer) : std::make_shared<Observer>())),
      services_(std::make_shared<const std::vector<Service>>(makeServices(core_))),
      object_(CTzPolymorph<Object, ITzHost>::create(core_, services_)) {}

Host::~Host() {
    core_->servers.forget();
}

ScenePtr Host::makeScene() const {
    return CTzPolymorph<Scene, ITzScene>::createSelf(core_);
}

std::vector<std::string> Host::foreignReferences() const {
    std::vector<std::string> reports;
    report(reports, "host", otherReferences(object_.get()));
    std::map<std::string, uint32_t> alive = core_->gate.objectsAlive();
    alive.erase("host");
    for (const Service& service : *services_) {
        report(reports, std::string("service ") + service.id, otherReferences(service.object.get()));
    }
    for (const auto& [kind, count] : alive) {
        if (kind.rfind("service ", 0) != 0) report(reports, kind, count);
    }
    return reports;
}

}  // namespace tzhost

// The service ITzTypeService: the codes of the host's types.
#include "host/Services.h"
#include "host/Types.h"
#include "host/Utf8.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzServices.h"

namespace tzhost {
namespace {

class TypeService : public HostObject, public ITzTypeService {
  public:
    explicit TypeService(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzTypeService") {}

    TzResult typeCode(TzText name, uint32_t* code) noexcept override {
        return onAnyThread("ITzTypeService::typeCode", [&] {
            if (!code) throw CTzError(kTzInvalidArgument);
            const auto found = tzhost::typeCode(checkedText(name));
            if (!found) throw CTzError(kTzNotFound);
            *code = *found;
        });
    }
};

}  // namespace

CTzPtr<ITzObject> makeTypeService(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<TypeService, ITzTypeService>::create(core).query<ITzObject>();
}

}  // namespace tzhost

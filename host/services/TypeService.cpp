// The service ITzTypeService: the types of this host's loads, by name and by code.
#include "host/core/Utf8.h"
#include "host/services/Services.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzServices.h"

namespace tzhost {
namespace {

struct Type {
    std::string_view name;
    uint32_t code;
};

constexpr Type kTypes[] = {
    {"image", tzTag("IMAG")},
    {"scene2", tzTag("SCN2")},
};

class TypeService : public HostObject, public ITzTypeService {
  public:
    explicit TypeService(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzTypeService") {}

    TzResult typeCode(TzText name, uint32_t* code) noexcept override {
        return onAnyThread("ITzTypeService::typeCode", [&] {
            if (!code) throw CTzError(kTzInvalidArgument);
            const std::string_view wanted = checkedText(name);
            for (const Type& type : kTypes) {
                if (type.name != wanted) continue;
                *code = type.code;
                return;
            }
            throw CTzError(kTzNotFound);
        });
    }
};

}  // namespace

std::string_view typeName(uint32_t code) {
    for (const Type& type : kTypes) {
        if (type.code == code) return type.name;
    }
    return {};
}

CTzPtr<ITzObject> makeTypeService(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<TypeService, ITzTypeService>::create(core).query<ITzObject>();
}

}  // namespace tzhost

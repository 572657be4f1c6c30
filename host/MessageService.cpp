// The service ITzMessages: the host's messages to the user as modules see them.
#include "host/Services.h"
#include "host/Utf8.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzMessages.h"

namespace tzhost {
namespace {

class MessageService : public HostObject, public ITzMessages {
  public:
    explicit MessageService(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzMessages") {}

    TzResult post(TzText table, uint32_t code, const TzText* arguments, uint32_t count) noexcept override {
        return onHostThread("ITzMessages::post", [&] {
            if (!arguments && count > 0) throw CTzError(kTzInvalidArgument);
            std::vector<std::string_view> texts;
            for (uint32_t i = 0; i < count; ++i) texts.push_back(checkedText(arguments[i]));
            core().messages.post(checkedText(table), code, texts);
        });
    }
};

}  // namespace

CTzPtr<ITzObject> makeMessageService(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<MessageService, ITzMessages>::create(core).query<ITzObject>();
}

}  // namespace tzhost

// The service ITzMessages: the message tables, and a module's messages from them to the user.
#include <array>

#include "host/core/Utf8.h"
#include "host/services/Services.h"
#include "hostsdk/CTzPolymorph.h"
#include "hostsdk/ITzMessages.h"

namespace tzhost {
namespace {

struct Message {
    std::string_view table;
    uint32_t code;
    std::string_view text;
};

// All message tables.
constexpr std::array<Message, 1> kMessages = {{
    {"common", 2020, "%1"},  // a warning in a module's own words
}};

std::string_view findText(std::string_view table, uint32_t code) {
    for (const Message& message : kMessages) {
        if (message.table == table && message.code == code) return message.text;
    }
    throw CTzError(kTzNotFound);
}

// The text with its places %1 to %9 filled by the arguments, argument 1 being the first.
std::string filledIn(std::string_view text, const std::vector<std::string_view>& arguments) {
    std::string filled;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool isPlace =
            text[i] == '%' && i + 1 < text.size() && text[i + 1] >= '1' && text[i + 1] <= '9';
        if (!isPlace) {
            filled += text[i];
            continue;
        }
        const auto number = static_cast<size_t>(text[++i] - '0');
        if (number <= arguments.size()) filled += arguments[number - 1];
    }
    return filled;
}

class MessageService : public HostObject, public ITzMessages {
  public:
    explicit MessageService(std::shared_ptr<HostCore> core)
        : HostObject(std::move(core), "service ITzMessages") {}

    TzResult post(TzText table, uint32_t code, const TzText* arguments, uint32_t count) noexcept override {
        return onHostThread("ITzMessages::post", [&] {
            if (!arguments && count > 0) throw CTzError(kTzInvalidArgument);
            std::vector<std::string_view> texts;
            for (uint32_t i = 0; i < count; ++i) texts.push_back(checkedText(arguments[i]));
            core().observer->message(toOneLine(filledIn(findText(checkedText(table), code), texts)));
        });
    }
};

}  // namespace

CTzPtr<ITzObject> makeMessageService(const std::shared_ptr<HostCore>& core) {
    return CTzPolymorph<MessageService, ITzMessages>::create(core).query<ITzObject>();
}

}  // namespace tzhost

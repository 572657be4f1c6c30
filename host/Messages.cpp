// See the header.
#include "host/Messages.h"

#include <array>

#include "host/Utf8.h"
#include "hostsdk/CTzError.h"

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

}  // namespace

void Messages::post(std::string_view table, uint32_t code,
                    const std::vector<std::string_view>& arguments) const {
    const std::string_view text = findText(table, code);
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
    if (sink_) sink_(toOneLine(filled));
}

}  // namespace tzhost

// Tag IDs and polygon types as the four ASCII characters that they are in scene files and messages.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "hostsdk/TzTypes.h"

namespace tzhost {

constexpr bool isTagName(TzTagId id) {
    return (id & 0x80808080U) == 0;
}

inline std::string tagName(TzTagId id) {
    return {static_cast<char>(id >> 24U), static_cast<char>(id >> 16U), static_cast<char>(id >> 8U),
            static_cast<char>(id)};
}

// Nothing when the text is not four ASCII characters.
inline std::optional<TzTagId> tagFromName(std::string_view name) {
    if (name.size() != 4) return std::nullopt;
    TzTagId id = 0;
    for (const char character : name) id = (id << 8U) | static_cast<unsigned char>(character);
    return isTagName(id) ? std::optional<TzTagId>(id) : std::nullopt;
}

}  // namespace tzhost

// The types of this host's loads, by name and by code. Used by the type service and by the report of an
// image.
#pragma once

#include <optional>
#include <string_view>

#include "hostsdk/TzTypes.h"

namespace tzhost {

struct TypeName {
    std::string_view name;
    uint32_t code;
};

constexpr TypeName kTypes[] = {
    {"image", tzTag("IMAG")},
    {"scene2", tzTag("SCN2")},
};

constexpr std::optional<uint32_t> typeCode(std::string_view name) {
    for (const TypeName& type : kTypes) {
        if (type.name == name) return type.code;
    }
    return std::nullopt;
}

// Empty for a code that is no type's.
constexpr std::string_view typeName(uint32_t code) {
    for (const TypeName& type : kTypes) {
        if (type.code == code) return type.name;
    }
    return {};
}

}  // namespace tzhost

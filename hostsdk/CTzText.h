// Text across the boundary, from and to the standard library's types: inside one side only.
#pragma once

#include <string>
#include <string_view>

#include "hostsdk/CTzError.h"

inline TzText tzText(std::string_view text) {
    return {text.data(), text.size()};
}

inline std::string_view tzView(TzText text) {
    return text.size == 0 ? std::string_view{} : std::string_view{text.data, static_cast<size_t>(text.size)};
}

// A sink that replaces `target` by what is written.
inline TzTextSink tzSinkTo(std::string& target) {
    return {&target, [](void* context, TzText text) noexcept {
                return tzGate([&] { static_cast<std::string*>(context)->assign(tzView(text)); });
            }};
}

// Hands a text to a sink.
inline void tzWrite(TzTextSink sink, std::string_view text) {
    tzCheck(sink.write(sink.context, tzText(text)));
}

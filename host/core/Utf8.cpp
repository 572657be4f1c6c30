#include "host/core/Utf8.h"

#include <array>
#include <cstdint>
#include <cstring>

namespace tzhost {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// The length of the well-formed sequence that the text starts with; 0 when it starts with none.
size_t sequenceLength(std::string_view text) {
    const auto byte = [&](size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const auto follows = [&](size_t i) { return (byte(i) & 0xC0U) == 0x80U; };
    const unsigned lead = byte(0);
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return follows(1) ? 2 : 0;
    if (lead >= 0xE0 && lead <= 0xEF) {
        const bool overlong = lead == 0xE0 && byte(1) < 0xA0;
        const bool surrogate = lead == 0xED && byte(1) > 0x9F;
        return follows(1) && follows(2) && !overlong && !surrogate ? 3 : 0;
    }
    if (lead >= 0xF0 && lead <= 0xF4) {
        const bool overlong = lead == 0xF0 && byte(1) < 0x90;
        const bool beyond = lead == 0xF4 && byte(1) > 0x8F;
        return follows(1) && follows(2) && follows(3) && !overlong && !beyond ? 4 : 0;
    }
    return 0;
}

// Most text is ASCII: eight bytes at a time.
size_t asciiPrefix(std::string_view text) {
    size_t at = 0;
    for (; at + sizeof(uint64_t) <= text.size(); at += sizeof(uint64_t)) {
        uint64_t bytes = 0;
        std::memcpy(&bytes, text.data() + at, sizeof bytes);
        if ((bytes & 0x8080808080808080U) != 0) break;
    }
    while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) ++at;
    return at;
}

}  // namespace

bool isUtf8(std::string_view text) {
    while (!text.empty()) {
        text.remove_prefix(asciiPrefix(text));
        if (text.empty()) return true;
        const size_t length = sequenceLength(text);
        if (length == 0) return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string toUtf8(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const size_t length = sequenceLength(text);
        result += length == 0 ? kReplacement : text.substr(0, length);
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

std::string toOneLine(std::string_view text, size_t limit) {
    static constexpr std::array<char, 17> kDigits{"0123456789ABCDEF"};
    std::string result;
    while (!text.empty()) {
        const size_t length = sequenceLength(text);
        std::string piece(length == 0 ? kReplacement : text.substr(0, length));
        const auto byte = static_cast<unsigned char>(piece.front());
        if (byte < 0x20 || byte == 0x7F) piece = {'\\', 'x', kDigits[byte >> 4U], kDigits[byte & 0xFU]};
        if (result.size() + piece.size() > limit) return result + "...";
        result += piece;
        text.remove_prefix(length == 0 ? 1 : length);
    }
    return result;
}

std::string_view checkedText(TzText text) {
    if (!text.data && text.size != 0) throw CTzError(kTzInvalidArgument);
    const std::string_view view = tzView(text);
    if (!isUtf8(view)) throw CTzError(kTzInvalidArgument);
    return view;
}

void writeTo(TzTextSink sink, std::string_view text) {
    if (!sink.write) throw CTzError(kTzInvalidArgument);
    tzWrite(sink, text);
}

}  // namespace tzhost

// See the header. Plain numbers are read here, longer ones and exponents by std::from_chars, which rounds as
// the toolkit does (correctly); whatever it does not take whole goes to the toolkit. NumberText/equalsToolkit
// pins that all agree.
#include "import/text/NumberText.h"

#include <QString>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

namespace tzsvg {
namespace {

// Reads digits with or without a "-" before and a point among them: what nearly every number in a drawing is.
// Up to fifteen digits are a whole number and a power of ten that doubles hold exactly, and their quotient is
// rounded once: correctly. Nothing for other text.
std::optional<double> readPlain(QStringView text) {
    constexpr std::array<double, 16> kPowers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char16_t* at = text.utf16();
    const char16_t* const end = at + text.size();
    const bool negative = at != end && *at == u'-';
    if (negative) ++at;
    const char16_t* const digits = at;
    const char16_t* point = nullptr;
    uint64_t whole = 0;
    for (; at != end; ++at) {
        const auto digit = static_cast<uint16_t>(*at - u'0');
        if (digit <= 9) {
            whole = whole * 10 + digit;
        } else if (*at == u'.' && !point) {
            point = at;
        } else {
            return std::nullopt;
        }
    }
    const auto count = static_cast<size_t>(end - digits) - (point ? 1 : 0);
    if (count == 0 || count >= kPowers.size()) return std::nullopt;
    const double value =
        static_cast<double>(whole) / kPowers[point ? static_cast<size_t>(end - point) - 1 : 0];
    return negative ? -value : value;
}

bool isAsciiDigitOrDot(char c) {
    return (c >= '0' && c <= '9') || c == '.';
}

}  // namespace

double toDouble(QStringView text, bool& ok) {
    if (const std::optional<double> value = readPlain(text)) {
        ok = true;
        return *value;
    }
    std::array<char, 48> plain;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled below
    const auto size = static_cast<size_t>(text.size());
    if (size > 0 && size <= plain.size()) {
        for (size_t i = 0; i < size; ++i) {
            const char16_t c = text.utf16()[i];
            plain[i] = c < 0x80 ? static_cast<char>(c) : '?';
        }
        const size_t digits = plain[0] == '-' ? 1 : 0;
        if (digits < size && isAsciiDigitOrDot(plain[digits])) {
            double value = 0.0;
            const auto [end, error] = std::from_chars(plain.data(), plain.data() + size, value);
            if (error == std::errc() && end == plain.data() + size) {
                ok = true;
                return value;
            }
        }
    }
    return text.toDouble(&ok);
}

}  // namespace tzsvg

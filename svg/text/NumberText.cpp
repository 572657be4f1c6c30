// See the header. Plain numbers are read here, longer ones and exponents by std::from_chars, which rounds as
// the toolkit does (correctly); whatever it does not take whole goes to the toolkit. NumberText/equalsToolkit
// pins that all agree.
#include "svg/text/NumberText.h"

#include <QString>
#include <array>
#include <charconv>
#include <cstdint>

namespace tzsvg {
namespace {

bool isAsciiDigitOrDot(char c) {
    return (c >= '0' && c <= '9') || c == '.';
}

}  // namespace

// Up to fifteen digits are a whole number and a power of ten that doubles hold exactly, and their quotient is
// rounded once: correctly.
const char16_t* readPlainNumber(const char16_t* text, const char16_t* end, double& value) {
    static constexpr std::array<double, 16> kPowers = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                       1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    const char16_t* at = text;
    const bool negative = at != end && *at == u'-';
    if (negative) ++at;
    uint64_t whole = 0;
    const auto readDigits = [&] {
        const char16_t* const first = at;
        for (; at != end; ++at) {
            const auto digit = static_cast<uint16_t>(*at - u'0');
            if (digit > 9) break;
            whole = whole * 10 + digit;
        }
        return static_cast<size_t>(at - first);
    };
    size_t count = readDigits();
    size_t decimals = 0;
    if (at != end && *at == u'.') {
        ++at;
        decimals = readDigits();
        count += decimals;
    }
    if (count == 0 || count >= kPowers.size()) return nullptr;
    value = static_cast<double>(whole);
    if (decimals > 0) value /= kPowers[decimals];
    if (negative) value = -value;
    return at;
}

double toDouble(QStringView text, bool& ok) {
    double number = 0.0;
    const char16_t* const textEnd = text.utf16() + text.size();
    if (readPlainNumber(text.utf16(), textEnd, number) == textEnd && !text.isEmpty()) {
        ok = true;
        return number;
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

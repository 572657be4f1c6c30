// See the header. Plain numbers take std::from_chars, which rounds as the toolkit does (correctly); whatever
// it does not take whole goes to the toolkit. NumberText/equalsToolkit pins that both agree.
#include "import/text/NumberText.h"

#include <QString>
#include <array>
#include <charconv>

namespace tzsvg {
namespace {

bool isAsciiDigitOrDot(char c) {
    return (c >= '0' && c <= '9') || c == '.';
}

}  // namespace

double toDouble(QStringView text, bool& ok) {
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

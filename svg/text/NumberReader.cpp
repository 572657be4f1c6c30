// Nearly every number of a drawing is plain, with at most fifteen digits and no exponent. Longer ones and
// exponents fall back to std::from_chars, which rounds correctly, as Qt does; what that does not read whole
// falls back to Qt. NumberText/equalsQt pins that all three agree.
#include "svg/text/NumberReader.h"

#include <locale.h>  // NOLINT(modernize-deprecated-headers): newlocale is POSIX

#include <QString>
#include <array>
#include <charconv>
#include <clocale>
#include <cstdarg>
#include <cstdint>
#include <cstdio>

namespace tzsvg {
namespace {

bool isAsciiDigitOrPoint(char c) {
    return (c >= '0' && c <= '9') || c == '.';
}

// Puts the calling thread into the "C" locale for its lifetime.
class CLocaleScope {
  public:
    CLocaleScope() : previous_(uselocale(cLocale())) {}
    ~CLocaleScope() { uselocale(previous_); }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

  private:
    static locale_t cLocale() {
        static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);  // lives as long as the module
        return locale;
    }
    locale_t previous_;
};

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
        if (digits < size && isAsciiDigitOrPoint(plain[digits])) {
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

bool scanNumber(QStringView text, qsizetype& position, double& value) {
    value = 0.0;
    skipWhiteSpace(text, position);
    const char16_t* const begin = text.utf16();
    const char16_t* const textEnd = begin + text.size();
    const char16_t* const plainEnd = readPlainNumber(begin + position, textEnd, value);
    // A second point, and digits of other scripts, take the long way.
    if (plainEnd && (plainEnd == textEnd || (*plainEnd != u'.' && *plainEnd < 0x80))) {
        position = plainEnd - begin;
        return true;
    }
    value = 0.0;

    qsizetype end = position;
    if (end < text.size() && text.at(end) == u'-') ++end;
    bool sawPoint = false;
    for (; end < text.size(); ++end) {
        const QChar c = text.at(end);
        if (c == u'.') {
            // "0.5.5" is refused, not split into two numbers. Meant so; NumberScanner/secondPoint pins it.
            if (sawPoint) return false;
            sawPoint = true;
        } else if (!c.isDigit()) {
            break;
        }
    }
    bool ok = false;
    const double number = toDouble(text.mid(position, end - position), ok);
    if (!ok) return false;
    value = number;
    position = end;
    return true;
}

int scanText(const char* text, const char* format, ...) {
    const CLocaleScope scope;
    va_list arguments;
    va_start(arguments, format);
    const int read = std::vsscanf(text, format, arguments);
    va_end(arguments);
    return read;
}

}  // namespace tzsvg

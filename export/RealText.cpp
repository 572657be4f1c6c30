// See the header. Nearly every coordinate lies between 0.0001 and 999999 and is no tie: it is scaled to six
// digits before the point and rounded. Everything else goes to the toolkit. RealText/equalsToolkit pins that
// both agree.
#include "export/RealText.h"

#include <QString>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>

namespace tzsvg {
namespace {

constexpr int kDigits = 6;
constexpr int kSmallestExponent = -4;  // below and
constexpr int kLargestExponent = 5;    // above these the toolkit prints an exponent

constexpr std::array<double, 10> kPowers = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
constexpr std::array<double, 4> kInversePowers = {1e-1, 1e-2, 1e-3, 1e-4};

// A number rounded to six significant digits: digits * 10^(exponent - 5).
struct Rounded {
    uint32_t digits;
    int exponent;
};

// Rounds a number greater than 0. Nothing when it is out of range, or so close to the middle between two
// results that the scaling's own rounding could decide.
std::optional<Rounded> roundToDigits(double magnitude) {
    if (!(magnitude >= kInversePowers.back() && magnitude < kPowers[kDigits])) return std::nullopt;
    int exponent = 0;
    if (magnitude >= 1.0) {
        while (magnitude >= kPowers[static_cast<size_t>(exponent) + 1]) ++exponent;
    } else {
        do {
            --exponent;
        } while (magnitude < kInversePowers[static_cast<size_t>(-exponent - 1)]);
    }
    const double scaled = magnitude * kPowers[static_cast<size_t>(kLargestExponent - exponent)];
    auto digits = static_cast<uint32_t>(scaled);
    const double fraction = scaled - digits;
    constexpr double kTooClose = 1e-6;  // the scaling is exact to about 1e-10
    if (std::abs(fraction - 0.5) < kTooClose) return std::nullopt;
    if (fraction > 0.5) ++digits;
    constexpr uint32_t kOverflow = 1000000;
    if (digits == kOverflow) {
        digits /= 10;
        ++exponent;
    }
    if (exponent > kLargestExponent) return std::nullopt;
    return Rounded{digits, exponent};
}

// Digits are copied a machine word at a time, without a look at how many there are.
constexpr size_t kWord = 8;

// Room for a number that roundToDigits() can do, with what a copied word may write behind it.
constexpr size_t kRoom = 16 + kWord;

// Writes the number; returns the end. Null when roundToDigits() cannot do it.
char* writeFast(char* out, double value) {
    if (value == 0.0) {
        *out = '0';
        return out + 1;
    }
    const auto rounded = roundToDigits(std::abs(value));
    if (!rounded) return nullptr;
    if (value < 0.0) *out++ = '-';

    std::array<char, 2 * kWord> digits;  // NOLINT(cppcoreguidelines-pro-type-member-init): kDigits are read
    uint32_t rest = rounded->digits;
    for (int i = kDigits; i-- > 0; rest /= 10)
        digits[static_cast<size_t>(i)] = static_cast<char>('0' + rest % 10);
    int used = kDigits;
    while (used > 1 && digits[static_cast<size_t>(used) - 1] == '0') --used;

    if (rounded->exponent < 0) {
        std::memcpy(out, "0.00000", kWord);
        out += 1 - rounded->exponent;
        std::memcpy(out, digits.data(), kWord);
        return out + used;
    }
    const int whole = rounded->exponent + 1;
    std::memcpy(out, digits.data(), kWord);
    out += whole;
    if (used <= whole) return out;
    *out++ = '.';
    std::memcpy(out, digits.data() + whole, kWord);
    return out + (used - whole);
}

std::string toolkitText(double value) {
    return QString::number(value, 'g', kDigits).toStdString();
}

// Rewrites d.ddde+XX in plain decimal.
void appendWithoutExponent(std::string& text, std::string_view number) {
    const size_t mark = number.find('e');
    if (mark == std::string_view::npos) {
        text += number;
        return;
    }
    const int exponent = std::stoi(std::string(number.substr(mark + 1)));
    std::string digits;
    for (const char c : number.substr(0, mark)) {
        if (c == '-') text += c;
        if (c >= '0' && c <= '9') digits += c;
    }
    if (exponent < 0) {
        text.append("0.");
        text.append(static_cast<size_t>(-exponent - 1), '0');
        text.append(digits);
        return;
    }
    // An exponent is printed from 6 on only, and there are at most six digits: all stand before the point.
    digits.resize(static_cast<size_t>(exponent) + 1, '0');
    text.append(digits);
}

// Writes a pair in one go; for numbers that writeFast() cannot do, `appendOther` writes both.
template <class AppendOther>
void appendPairAs(std::string& text, double x, double y, AppendOther&& appendOther) {
    std::array<char, 2 * kRoom> pair;  // NOLINT(cppcoreguidelines-pro-type-member-init): filled below
    char* end = writeFast(pair.data(), x);
    if (end) {
        *end++ = ',';
        end = writeFast(end, y);
    }
    if (end) {
        *end++ = ' ';
        text.append(pair.data(), static_cast<size_t>(end - pair.data()));
        return;
    }
    appendOther(text, toolkitText(x));
    text += ',';
    appendOther(text, toolkitText(y));
    text += ' ';
}

}  // namespace

void appendReal(std::string& text, double value) {
    text += toolkitText(value);
}

void appendPair(std::string& text, double x, double y) {
    appendPairAs(text, x, y, [](std::string& to, const std::string& number) { to += number; });
}

void appendPlainPair(std::string& text, double x, double y) {
    appendPairAs(text, x, y, appendWithoutExponent);
}

}  // namespace tzsvg

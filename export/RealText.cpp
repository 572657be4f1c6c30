// See the header. Nearly every coordinate lies between 0.0001 and 999999 and is no tie: it is scaled to six
// digits before the point and rounded. Everything else goes to the toolkit. RealText/equalsToolkit pins that
// both agree.
#include "export/RealText.h"

#include <QString>
#include <array>
#include <cmath>
#include <cstdint>
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
    const double whole = std::floor(scaled);
    const double fraction = scaled - whole;
    constexpr double kTooClose = 1e-6;  // the scaling is exact to about 1e-10
    if (std::abs(fraction - 0.5) < kTooClose) return std::nullopt;
    auto digits = static_cast<uint32_t>(whole) + (fraction > 0.5 ? 1 : 0);
    constexpr uint32_t kOverflow = 1000000;
    if (digits == kOverflow) {
        digits /= 10;
        ++exponent;
    }
    if (exponent > kLargestExponent) return std::nullopt;
    return Rounded{digits, exponent};
}

void appendRounded(std::string& text, const Rounded& rounded) {
    std::array<char, kDigits> digits{};
    uint32_t rest = rounded.digits;
    for (size_t i = digits.size(); i-- > 0; rest /= 10) digits[i] = static_cast<char>('0' + rest % 10);
    size_t used = digits.size();
    while (used > 1 && digits[used - 1] == '0') --used;

    if (rounded.exponent < 0) {
        text.append("0.");
        text.append(static_cast<size_t>(-rounded.exponent - 1), '0');
        text.append(digits.data(), used);
        return;
    }
    const size_t whole = static_cast<size_t>(rounded.exponent) + 1;
    text.append(digits.data(), whole);
    if (used > whole) {
        text += '.';
        text.append(digits.data() + whole, used - whole);
    }
}

// False when the number is none that appendRounded() can do.
bool appendFast(std::string& text, double value) {
    if (value == 0.0) {
        text += '0';
        return true;
    }
    const auto rounded = roundToDigits(std::abs(value));
    if (!rounded) return false;
    if (value < 0.0) text += '-';
    appendRounded(text, *rounded);
    return true;
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

}  // namespace

void appendReal(std::string& text, double value) {
    if (!appendFast(text, value)) text += toolkitText(value);
}

void appendPlainReal(std::string& text, double value) {
    if (!appendFast(text, value)) appendWithoutExponent(text, toolkitText(value));
}

}  // namespace tzsvg

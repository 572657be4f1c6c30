// Nearly every number lies between 0.0001 and 999999: it is scaled to six digits before the point and
// rounded. Numbers outside, and those so close to a tie that the scaling's own error could decide it, fall
// back to Qt. RealText/equalsQt pins that both agree.
#include "svg/text/RealText.h"

#include <QString>
#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

#include "svg/text/Digits.h"

namespace tzsvg {
namespace {

constexpr int kDigits = 6;
constexpr int kLargestExponent = 5;  // above it, and below -4, Qt prints an exponent

constexpr std::array<double, 10> kPowers = {1e0, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9};
constexpr std::array<double, 4> kInversePowers = {1e-1, 1e-2, 1e-3, 1e-4};

// A number rounded to six significant digits: digits * 10^(exponent - 5).
struct Rounded {
    uint32_t digits;
    int exponent;
};

// Rounds a number greater than 0. Nothing when it is out of range or too close to a tie.
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

}  // namespace

char* writeReal(char* out, double value) {
    if (value == 0.0) {
        *out = '0';
        return out + 1;
    }
    const auto rounded = roundToDigits(std::abs(value));
    if (!rounded) return nullptr;
    if (value < 0.0) *out++ = '-';

    Characters digits = eightDigits(rounded->digits) >> 8U * (8 - kDigits);
    const int used = 8 - __builtin_clzll(digits) / 8;  // up to the last that is not 0; the first is not
    digits |= kZeros;

    if (rounded->exponent < 0) {
        store(out, 0x3030303030302E30U);  // "0.000000"
        out += 1 - rounded->exponent;
        store(out, digits);
        return out + used;
    }
    const int whole = rounded->exponent + 1;
    store(out, digits);
    out += whole;
    if (used <= whole) return out;
    *out++ = '.';
    store(out, digits >> (8U * static_cast<unsigned>(whole)));
    return out + (used - whole);
}

std::string realText(double value) {
    return QString::number(value, 'g', kDigits).toStdString();
}

}  // namespace tzsvg

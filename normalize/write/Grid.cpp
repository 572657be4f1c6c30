#include "normalize/write/Grid.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>

namespace tznormalize {
namespace {

constexpr int kMostDecimals = 6;
constexpr std::array<double, kMostDecimals + 1> kFactors = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

// [trap: the import's flip height is a whole number of 32 bits] What is further away than any drawing reaches
// is brought nearer. Whole numbers of the grid's lines are exact up to there.
constexpr double kFarthest = 1e9;

double limited(double value) {
    if (std::isnan(value)) return 0;
    return std::abs(value) <= kFarthest ? value : std::copysign(kFarthest, value);
}

// A whole number of the grid's lines, as a number with that many decimals.
void appendScaled(std::string& out, int64_t scaled, int decimals) {
    char digits[24];
    char* const end = digits + sizeof digits;
    char* at = end;
    uint64_t rest = scaled < 0 ? uint64_t(-scaled) : uint64_t(scaled);
    for (; decimals > 0 && rest % 10 == 0; --decimals) rest /= 10;
    if (decimals > 0) {
        for (int i = 0; i < decimals; ++i, rest /= 10) *--at = char('0' + rest % 10);
        *--at = '.';
    }
    do {
        *--at = char('0' + rest % 10);
        rest /= 10;
    } while (rest > 0);
    if (scaled < 0) *--at = '-';
    out.append(at, end);
}

}  // namespace

Grid::Grid(int decimals) : decimals_(decimals), factor_(kFactors[size_t(decimals)]), step_(1 / factor_) {}

double Grid::round(double value) const {
    return std::round(limited(value) * factor_) / factor_ + 0.0;
}

void Grid::append(std::string& out, double value) const {
    appendScaled(out, int64_t(std::round(limited(value) * factor_)), decimals_);
}

std::string Grid::text(double value) const {
    std::string out;
    append(out, value);
    return out;
}

void appendShortNumber(std::string& out, double value, int digits) {
    constexpr double kLargest = 1e18;
    if (!(std::abs(value) < kLargest)) {
        out += std::isfinite(value) ? (value < 0 ? "-1000000000000000000" : "1000000000000000000") : "0";
        return;
    }
    if (value == 0) {
        out += '0';
        return;
    }
    const int magnitude = int(std::floor(std::log10(std::abs(value)))) + 1;
    const int decimals = std::min(std::max(digits - magnitude, 0), 17);
    char text[64];
    const auto made = std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals);
    const char* end = made.ptr;
    if (decimals > 0) {
        while (end[-1] == '0') --end;
        if (end[-1] == '.') --end;
    }
    const std::string_view number(text, size_t(end - text));
    out += number == "-0" ? std::string_view("0") : number;
}

std::string shortNumber(double value, int digits) {
    std::string out;
    appendShortNumber(out, value, digits);
    return out;
}

}  // namespace tznormalize

#include "normalize/write/Grid.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "svg/text/Digits.h"

namespace tznormalize {
namespace {

constexpr int kMostDecimals = 6;
constexpr std::array<double, kMostDecimals + 1> kFactors = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6};

// A whole number of the grid's lines, as a number with that many decimals.
char* writeLarge(char* out, uint64_t lines, int decimals) {
    for (; decimals > 0 && lines % 10 == 0; --decimals) lines /= 10;
    char digits[Grid::kRoom];
    char* const end = digits + sizeof digits;
    char* at = end;
    if (decimals > 0) {
        for (int i = 0; i < decimals; ++i, lines /= 10) *--at = char('0' + lines % 10);
        *--at = '.';
    }
    do {
        *--at = char('0' + lines % 10);
        lines /= 10;
    } while (lines > 0);
    return std::copy(at, end, out);
}

}  // namespace

Grid::Grid(int decimals) : decimals_(decimals), factor_(kFactors[size_t(decimals)]), step_(1 / factor_) {}

char* Grid::write(char* out, int64_t line) const {
    if (line < 0) *out++ = '-';
    const auto lines = uint64_t(line < 0 ? -line : line);
    constexpr int kDigits = 8;
    constexpr uint64_t kLarge = 100'000'000;
    if (lines >= kLarge) return writeLarge(out, lines, decimals_);
    const tzsvg::Characters digits = tzsvg::eightDigits(uint32_t(lines));
    if (digits == 0) {
        *out = '0';
        return out + 1;
    }
    const int whole = kDigits - decimals_;
    const int leading = std::min(__builtin_ctzll(digits) / 8, whole - 1);  // one digit before the point stays
    const int used = kDigits - __builtin_clzll(digits) / 8;
    const tzsvg::Characters characters = digits | tzsvg::kZeros;
    tzsvg::store(out, characters >> unsigned(8 * leading));
    out += whole - leading;
    if (used <= whole) return out;
    *out++ = '.';
    tzsvg::store(out, characters >> unsigned(8 * whole));
    return out + (used - whole);
}

void Grid::append(std::string& out, double value) const {
    char text[kRoom];
    out.append(text, size_t(write(text, linesTo(value)) - text));
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
    if (std::abs(value) < 1e6 && value == std::trunc(value)) {
        out += std::to_string(int(value));
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

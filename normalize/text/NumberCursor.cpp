// Plain numbers are read at once, those with exponents or many digits by Qt's rules.
#include "normalize/text/NumberCursor.h"

#include <algorithm>
#include <cmath>

#include "svg/text/NumberReader.h"

namespace tznormalize {
namespace {

bool isDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

const char16_t* skipDigits(const char16_t* at, const char16_t* end) {
    while (at != end && isDigit(*at)) ++at;
    return at;
}

bool isExponentPart(const char16_t* at, const char16_t* end) {
    ++at;
    if (at != end && (*at == u'-' || *at == u'+')) ++at;
    return at != end && isDigit(*at);  // else the letter is a unit's: "2em"
}

inline bool isExponent(const char16_t* at, const char16_t* end) {
    return at != end && (*at == u'e' || *at == u'E') && isExponentPart(at, end);
}

// Where the number that begins at `at` ends; `at` itself when there is no digit.
const char16_t* endOfNumber(const char16_t* const at, const char16_t* const end) {
    const char16_t* const digits = at != end && *at == u'-' ? at + 1 : at;
    const char16_t* last = skipDigits(digits, end);
    auto count = last - digits;
    if (last != end && *last == u'.') {
        const char16_t* const decimals = last + 1;
        last = skipDigits(decimals, end);
        count += last - decimals;
    }
    if (count == 0) return at;
    if (!isExponent(last, end)) return last;
    return skipDigits(last + 2, end);
}

}  // namespace

bool NumberCursor::skipSeparator() {
    skipBlanks();
    if (at_ == end_ || *at_ != u',') return false;
    ++at_;
    skipBlanks();
    return true;
}

bool NumberCursor::readNumber(double& value) {
    const char16_t* start = at_;
    if (start != end_ && *start == u'+') {
        ++start;
        if (start != end_ && *start == u'-') return false;
    }
    double number = 0.0;
    const char16_t* last = tzsvg::readPlainNumber(start, end_, number);
    if (last == nullptr || isExponent(last, end_)) {
        last = endOfNumber(start, end_);
        if (last == start) return false;
        bool isRead = false;
        number = tzsvg::toDouble({start, last}, isRead);
        if (!isRead || !std::isfinite(number)) return false;
    }
    value = number;
    at_ = last;
    return true;
}

bool NumberCursor::readFlag(bool& value) {
    if (at_ == end_ || (*at_ != u'0' && *at_ != u'1')) return false;
    value = *at_++ == u'1';
    return true;
}

std::vector<double> readNumbers(QStringView text) {
    std::vector<double> numbers;
    NumberCursor cursor(text);
    cursor.skipBlanks();
    for (double number = 0.0; cursor.readNumber(number); cursor.skipSeparator()) numbers.push_back(number);
    return numbers;
}

std::optional<double> readNumber(QStringView text) {
    NumberCursor cursor(text);
    cursor.skipBlanks();
    double number = 0.0;
    if (!cursor.readNumber(number)) return std::nullopt;
    cursor.skipBlanks();
    return cursor.atEnd() ? std::optional(number) : std::nullopt;
}

std::optional<double> readShare(QStringView text) {
    NumberCursor cursor(text);
    cursor.skipBlanks();
    double number = 0.0;
    if (!cursor.readNumber(number)) return std::nullopt;
    if (cursor.peek() == u'%') {
        cursor.next();
        number /= 100.0;
    }
    cursor.skipBlanks();
    return cursor.atEnd() ? std::optional(number) : std::nullopt;
}

double readOpacity(QStringView text) {
    return std::clamp(readShare(text).value_or(1.0), 0.0, 1.0);
}

}  // namespace tznormalize

#include "export/CoordinateText.h"

#include <algorithm>

namespace tzsvg {
namespace {

// A number of realText() in plain decimal: d.ddde+XX is written out.
std::string withoutExponent(const std::string& number) {
    const size_t mark = number.find('e');
    if (mark == std::string::npos) return number;
    const int exponent = std::stoi(number.substr(mark + 1));
    std::string text;
    std::string digits;
    for (const char c : number.substr(0, mark)) {
        if (c == '-') text += c;
        if (c >= '0' && c <= '9') digits += c;
    }
    if (exponent < 0) {
        text.append("0.");
        text.append(static_cast<size_t>(-exponent - 1), '0');
    } else {
        // The exponent is at least 6 and there are at most six digits: all stand before the point.
        digits.resize(static_cast<size_t>(exponent) + 1, '0');
    }
    return text + digits;
}

}  // namespace

void CoordinateText::append(char character) {
    *makeRoom(1) = character;
    ++used_;
}

void CoordinateText::appendPair(double x, double y) {
    if (!appendFast(x, y)) append(realText(x) + ',' + realText(y) + ' ');
}

void CoordinateText::appendPlainPair(double x, double y) {
    if (!appendFast(x, y)) append(withoutExponent(realText(x)) + ',' + withoutExponent(realText(y)) + ' ');
}

char* CoordinateText::makeRoom(size_t size) {
    if (room_.size() - used_ < size) room_.resize(2 * room_.size() + size);
    return room_.data() + used_;
}

// False, with nothing appended, when one of the numbers takes realText().
bool CoordinateText::appendFast(double x, double y) {
    char* const start = makeRoom(2 * kRealRoom);
    char* end = writeReal(start, x);
    if (!end) return false;
    *end++ = ',';
    end = writeReal(end, y);
    if (!end) return false;
    *end++ = ' ';
    used_ += static_cast<size_t>(end - start);
    return true;
}

void CoordinateText::append(std::string_view text) {
    std::copy(text.begin(), text.end(), makeRoom(text.size()));
    used_ += text.size();
}

}  // namespace tzsvg

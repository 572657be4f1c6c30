#include "normalize/text/Transform.h"

#include <array>
#include <cmath>

#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

// The numbers of one function, angles in degrees.
struct Arguments {
    std::array<double, 6> values{};
    size_t count = 0;

    double operator[](size_t index) const { return values[index]; }
};

bool isLetter(char16_t c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

QStringView readName(NumberCursor& cursor) {
    const QStringView text = cursor.rest();
    while (isLetter(cursor.peek())) cursor.next();
    return text.left(text.size() - cursor.rest().size());
}

// Takes a unit to degrees or user units.
bool applyUnit(QStringView unit, double& value) {
    if (unit.isEmpty() || unit == u"deg" || unit == u"px") return true;
    if (unit == u"rad") return (value *= 180 / kPi, true);
    if (unit == u"grad") return (value *= 0.9, true);
    if (unit == u"turn") return (value *= 360, true);
    return false;
}

// The list from "(" to ")"; the last ")" of a text may be missing.
bool readArguments(NumberCursor& cursor, Arguments& arguments) {
    cursor.skipBlanks();
    if (cursor.peek() != u'(') return false;
    cursor.next();
    cursor.skipBlanks();
    for (bool isMore = true; isMore;) {
        double value = 0.0;
        if (arguments.count == arguments.values.size() || !cursor.readNumber(value)) return false;
        if (!applyUnit(readName(cursor), value)) return false;
        arguments.values[arguments.count++] = value;
        const bool isComma = cursor.skipSeparator();
        if (!isComma && cursor.atEnd()) return true;
        isMore = isComma || cursor.peek() != u')';
    }
    cursor.next();
    return true;
}

double tangent(double degrees) {
    return std::tan(degrees * kPi / 180);
}

std::optional<Matrix> functionMatrix(QStringView name, const Arguments& v) {
    const size_t n = v.count;
    if (name == u"matrix" && n == 6) return Matrix{v[0], v[1], v[2], v[3], v[4], v[5]};
    if (name == u"translate" && n <= 2) return Matrix::translation(v[0], v[1]);
    if (name == u"scale" && n <= 2) return Matrix::scaling(v[0], n == 2 ? v[1] : v[0]);
    if (name == u"rotate" && n == 1) return Matrix::rotation(v[0]);
    if (name == u"rotate" && n == 3) {
        return Matrix::translation(v[1], v[2]) * Matrix::rotation(v[0]) * Matrix::translation(-v[1], -v[2]);
    }
    if (n != 1) return std::nullopt;
    if (name == u"skewX") return Matrix{1.0, 0.0, tangent(v[0]), 1.0, 0.0, 0.0};
    if (name == u"skewY") return Matrix{1.0, tangent(v[0]), 0.0, 1.0, 0.0, 0.0};
    if (name == u"translateX") return Matrix::translation(v[0], 0.0);
    if (name == u"translateY") return Matrix::translation(0.0, v[0]);
    if (name == u"scaleX") return Matrix::scaling(v[0], 1.0);
    if (name == u"scaleY") return Matrix::scaling(1.0, v[0]);
    return std::nullopt;
}

}  // namespace

std::optional<Matrix> readTransform(QStringView text) {
    text = text.trimmed();
    if (text == u"none") return Matrix{};
    Matrix matrix;
    NumberCursor cursor(text);
    while (!cursor.atEnd()) {
        const QStringView name = readName(cursor);
        Arguments arguments;
        if (!readArguments(cursor, arguments)) return std::nullopt;
        const std::optional<Matrix> function = functionMatrix(name, arguments);
        if (!function) return std::nullopt;
        matrix = matrix * *function;
        cursor.skipSeparator();
    }
    if (!matrix.isFinite()) return std::nullopt;
    return matrix;
}

}  // namespace tznormalize

#include "normalize/text/Length.h"

#include <array>
#include <cmath>

#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

struct AbsoluteUnit {
    char16_t first, second;
    double factor;
};
constexpr std::array<AbsoluteUnit, 6> kAbsoluteUnits = {{
    {u'p', u'x', 1.0},
    {u'm', u'm', 96 / 25.4},
    {u'p', u't', 96.0 / 72},
    {u'c', u'm', 96 / 2.54},
    {u'i', u'n', 96.0},
    {u'p', u'c', 16.0},
}};

char16_t toLower(char16_t c) {
    return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + (u'a' - u'A')) : c;
}

}  // namespace

double Viewport::extent(Axis axis) const {
    if (axis == Axis::kHorizontal) return width;
    if (axis == Axis::kVertical) return height;
    return std::sqrt((width * width + height * height) / 2);
}

std::optional<double> readLength(QStringView text, Axis axis, const Viewport& viewport, double fontSize) {
    NumberCursor cursor(text);
    cursor.skipBlanks();
    double value = 0.0;
    if (!cursor.readNumber(value)) return std::nullopt;
    if (cursor.atEnd()) return value;
    const QStringView unit = cursor.rest().trimmed();
    if (unit.isEmpty()) return value;
    if (unit == u"%") return value * viewport.extent(axis) / 100;
    if (unit.size() != 2 || isBlank(cursor.peek())) return std::nullopt;
    const char16_t first = toLower(unit[0].unicode());
    const char16_t second = toLower(unit[1].unicode());
    for (const AbsoluteUnit& known : kAbsoluteUnits) {
        if (first == known.first && second == known.second) return value * known.factor;
    }
    if (first != u'e') return std::nullopt;
    if (second == u'm') return value * fontSize;
    if (second == u'x') return value * fontSize / 2;
    return std::nullopt;
}

}  // namespace tznormalize

#include "normalize/style/Color.h"

#include <QColor>
#include <algorithm>
#include <cmath>

#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

int hexDigit(char16_t c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    return -1;
}

std::optional<Color> readHex(QStringView digits) {
    int values[8] = {};
    int count = 0;
    for (; count < digits.size(); ++count) {
        const int value = hexDigit(digits.utf16()[count]);
        if (value < 0) break;
        if (count == 8) return std::nullopt;
        values[count] = value;
    }
    if (count < digits.size() && !digits[count].isSpace()) return std::nullopt;
    const bool isShort = count == 3 || count == 4;
    if (!isShort && count != 6 && count != 8) return std::nullopt;
    const auto part = [&](size_t i) {
        return uint8_t(isShort ? values[i] * 17 : values[2 * i] * 16 + values[2 * i + 1]);
    };
    const bool hasOpacity = count == 4 || count == 8;
    return Color{part(0), part(1), part(2), hasOpacity ? part(3) / 255.0 : 1.0};
}

// One number between the brackets of a colour function.
struct Part {
    double value = 0;
    bool isPercent = false;
};

// Three or four numbers, with commas or blanks between, a "/" before the fourth. False for anything else.
bool readParts(QStringView text, Part (&parts)[4], int& count) {
    NumberCursor cursor(text);
    for (count = 0; count < 4; ++count) {
        cursor.skipSeparator();
        if (cursor.peek() == u'/') {
            cursor.next();
            cursor.skipBlanks();
        }
        if (cursor.atEnd()) break;
        Part& part = parts[count];
        if (!cursor.readNumber(part.value)) return false;
        if (cursor.rest().startsWith(u"deg")) {
            for (int i = 0; i < 3; ++i) cursor.next();
        }
        part.isPercent = cursor.peek() == u'%';
        if (part.isPercent) cursor.next();
    }
    cursor.skipBlanks();
    return count >= 3 && cursor.atEnd();
}

uint8_t channel(double value) {
    return uint8_t(std::lround(std::clamp(value, 0.0, 255.0)));
}

double opacityOf(const Part& part) {
    return std::clamp(part.isPercent ? part.value / 100 : part.value, 0.0, 1.0);
}

// The formula of CSS Color 4, "Converting HSL colors to sRGB".
Color fromHsl(double hue, double saturation, double lightness) {
    const double reach = saturation * std::min(lightness, 1 - lightness);
    const auto one = [&](double n) {
        const double k = std::fmod(std::fmod(n + hue / 30, 12) + 12, 12);
        return channel(255 * (lightness - reach * std::max(-1.0, std::min({k - 3, 9 - k, 1.0}))));
    };
    return {one(0), one(8), one(4), 1};
}

std::optional<Color> readFunction(QStringView text) {
    const bool isRgb = text.startsWith(u"rgb", Qt::CaseInsensitive);
    const auto open = text.indexOf(u'(');
    const auto close = text.indexOf(u')');
    Part parts[4];
    int count = 0;
    if (open < 0 || close < open || !readParts(text.mid(open + 1, close - open - 1), parts, count))
        return std::nullopt;
    Color color;
    if (isRgb) {
        const auto value = [](const Part& part) {
            return channel(part.isPercent ? part.value * 255 / 100 : part.value);
        };
        color = {value(parts[0]), value(parts[1]), value(parts[2]), 1};
    } else {
        color = fromHsl(std::fmod(parts[0].value, 360.0), std::clamp(parts[1].value / 100, 0.0, 1.0),
                        std::clamp(parts[2].value / 100, 0.0, 1.0));
    }
    if (count == 4) color.opacity = opacityOf(parts[3]);
    return color;
}

}  // namespace

std::optional<Color> readColor(QStringView text, const Color& current) {
    text = text.trimmed();
    if (text.startsWith(u'#')) return readHex(text.mid(1));
    for (const QStringView function : {u"rgb(", u"rgba(", u"hsl(", u"hsla("}) {
        if (text.startsWith(function, Qt::CaseInsensitive)) return readFunction(text);
    }
    if (text.compare(u"currentColor", Qt::CaseInsensitive) == 0) return current;
    if (text.compare(u"transparent", Qt::CaseInsensitive) == 0) return Color{0, 0, 0, 0};
    const auto end = text.indexOf(u' ');
    if (end >= 0) text.truncate(end);  // an icc-color() behind the name
    if (!QColor::isValidColor(text))
        return std::nullopt;  // before: a name that it does not know, it warns of
    QColor named;
    named.setNamedColor(text);
    return Color{uint8_t(named.red()), uint8_t(named.green()), uint8_t(named.blue()), 1};
}

std::string colorText(const Color& color) {
    constexpr char kDigits[] = "0123456789abcdef";
    std::string text = "#";
    for (const uint8_t part : {color.red, color.green, color.blue}) {
        text += kDigits[part >> 4];
        text += kDigits[part & 15];
    }
    return text;
}

}  // namespace tznormalize

#include "normalize/style/Declarations.h"

#include <optional>

#include "normalize/style/Color.h"
#include "normalize/style/CssText.h"
#include "normalize/style/Reference.h"
#include "normalize/text/NumberCursor.h"

namespace tznormalize {
namespace {

bool isWordOfEvery(QStringView value) {
    return value == kInherit || value == kInitial || value == kUnset;
}

bool isPaint(QStringView value) {
    if (value.startsWith(u'#')) return readColor(value, {}).has_value();  // most are
    for (const QStringView word : {u"none", u"context-fill", u"context-stroke"}) {
        if (value.compare(word, Qt::CaseInsensitive) == 0) return true;
    }
    return readReference(value).isUrl || readColor(value, {});
}

// The word that ends at the next blank, cut off from the front of the text.
QStringView takeWord(QStringView& text) {
    qsizetype end = 0;
    while (end < text.size() && !text[end].isSpace()) ++end;
    const QStringView word = text.left(end);
    text = text.mid(end).trimmed();
    return word;
}

bool isOneOf(QStringView word, std::initializer_list<QStringView> words) {
    for (const QStringView one : words) {
        if (word.compare(one, Qt::CaseInsensitive) == 0) return true;
    }
    return false;
}

// The property that a word in front of the size of a `font` sets.
std::optional<Property> fontPropertyOf(QStringView word) {
    if (isOneOf(word, {u"italic", u"oblique"})) return Property::kFontStyle;
    if (isOneOf(word, {u"small-caps"})) return Property::kFontVariant;
    if (isOneOf(word, {u"bold", u"bolder", u"lighter"})) return Property::kFontWeight;
    const auto number = readNumber(word);
    if (number && *number >= 1 && *number <= 1000) return Property::kFontWeight;
    if (word.contains(u"condensed", Qt::CaseInsensitive) || word.contains(u"expanded", Qt::CaseInsensitive))
        return Property::kFontStretch;
    return std::nullopt;
}

// "italic bold 12px/14px Serif": words in any order, the size with or without a line height, the families.
void readFont(QStringView value, bool isImportant, std::vector<Declaration>& declarations) {
    if (isWordOfEvery(value)) {
        for (const Property each : {Property::kFontStyle, Property::kFontVariant, Property::kFontWeight,
                                    Property::kFontStretch, Property::kFontSize, Property::kFontFamily})
            declarations.push_back({each, value, isImportant});
        return;
    }
    std::vector<Declaration> found;
    QStringView rest = value;
    while (!rest.isEmpty()) {
        const QStringView word = takeWord(rest);
        if (word.compare(u"normal", Qt::CaseInsensitive) == 0) continue;
        const auto property = fontPropertyOf(word);
        // A number is a weight only if a size follows.
        if (property && !rest.isEmpty()) {
            found.push_back({*property, word, isImportant});
            continue;
        }
        const auto slash = word.indexOf(u'/');
        found.push_back({Property::kFontSize, slash < 0 ? word : word.left(slash), isImportant});
        break;
    }
    if (rest.isEmpty()) return;  // without a family it is none
    found.push_back({Property::kFontFamily, rest, isImportant});
    declarations.insert(declarations.end(), found.begin(), found.end());
}

void readDeclaration(QStringView name, QStringView value, std::vector<Declaration>& declarations) {
    bool isImportant = false;
    const auto mark = value.lastIndexOf(u'!');
    if (mark >= 0 && value.mid(mark + 1).trimmed().compare(u"important", Qt::CaseInsensitive) == 0) {
        isImportant = true;
        value = value.left(mark).trimmed();
    }
    if (name.isEmpty() || value.isEmpty()) return;
    const auto property = propertyOf(nameOf(name));
    if (property) {
        if (isValidValue(*property, value)) declarations.push_back({*property, value, isImportant});
    } else if (name.compare(u"marker", Qt::CaseInsensitive) == 0) {
        for (const Property each : {Property::kMarkerStart, Property::kMarkerMid, Property::kMarkerEnd})
            declarations.push_back({each, value, isImportant});
    } else if (name.compare(u"font", Qt::CaseInsensitive) == 0) {
        readFont(value, isImportant, declarations);
    }
}

}  // namespace

bool isValidValue(Property property, QStringView value) {
    switch (property) {
        case Property::kFill:
        case Property::kStroke:
            return isPaint(value) || isWordOfEvery(value);
        case Property::kColor:
        case Property::kStopColor:
        case Property::kFloodColor:
        case Property::kLightingColor:
            return isWordOfEvery(value) || readColor(value, {});
        case Property::kOpacity:
        case Property::kFillOpacity:
        case Property::kStrokeOpacity:
        case Property::kStopOpacity:
        case Property::kFloodOpacity:
            return isWordOfEvery(value) || readShare(value);
        default:
            return true;
    }
}

void readDeclarations(QStringView text, std::vector<Declaration>& declarations) {
    while (!text.isEmpty()) {
        const qsizetype end = findOutside(text, u";");
        const QStringView one = text.left(end);
        const auto colon = one.indexOf(u':');
        if (colon > 0) readDeclaration(one.left(colon).trimmed(), one.mid(colon + 1).trimmed(), declarations);
        text = behind(text, end);
    }
}

}  // namespace tznormalize

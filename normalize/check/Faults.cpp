// The import's scanner and the normalizer's walk over the same numbers: where they part is
// the fault.
#include "normalize/check/Faults.h"

#include "normalize/text/NumberCursor.h"
#include "normalize/text/PathData.h"
#include "normalize/text/Transform.h"
#include "svg/text/NumberReader.h"

namespace tznormalize {

const FindingRule kJoinedNumbers{"joined-numbers", "line breaks count as blanks"};
const FindingRule kMissingValue{"value", "left out: it draws nothing"};
const FindingRule kOtherValue{"other-value", "written as it is meant"};

namespace {

constexpr FindingRule kNumberForm{"number-form", "numbers are written plainly"};
constexpr FindingRule kListForm{"list-form", "written in the one form that is read"};
constexpr FindingRule kValue{"value", "drawn up to the fault, as renderers do"};
constexpr FindingRule kTransformValue{"value", "a faulty transform counts as none, as renderers do"};

constexpr int kLongestExcerpt = 40;

QString quoted(QStringView text) {
    text = text.trimmed();
    if (text.size() <= kLongestExcerpt) return QStringLiteral("\"%1\"").arg(text);
    return QStringLiteral("\"%1...\"").arg(text.left(kLongestExcerpt));
}

bool beginsNumber(char16_t c) {
    return (c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'+';
}

// The first number that the import's scanner does not read as renderers do; null when there is none.
QStringView firstOtherNumber(QStringView text) {
    NumberCursor cursor(text);
    while (!cursor.atEnd()) {
        const qsizetype start = text.size() - cursor.rest().size();
        double value = 0.0;
        if (!beginsNumber(cursor.peek()) || !cursor.readNumber(value)) {
            cursor.next();
            continue;
        }
        const qsizetype end = text.size() - cursor.rest().size();
        qsizetype position = start;
        double read = 0.0;
        if (!tzsvg::scanNumber(text, position, read)) {
            // ".5.5": the excerpt shows both numbers.
            while (!cursor.atEnd() && cursor.peek() == u'.' && cursor.readNumber(value)) {
            }
            return text.mid(start, text.size() - cursor.rest().size() - start);
        }
        if (position != end || read != value) return text.mid(start, end - start);
    }
    return {};
}

QString formOf(QStringView number) {
    if (number.contains(u'e') || number.contains(u'E'))
        return quoted(number) + QStringLiteral(" has an exponent");
    if (number.startsWith(u'+')) return quoted(number) + QStringLiteral(" has a plus sign");
    if (number.toString().count(u'.') > 1)
        return quoted(number) + QStringLiteral(" are numbers without a blank between them");
    return quoted(number) + QStringLiteral(" is not read");
}

// The fault of a text that renderers read, or do not.
Fault faultOf(QStringView text, QStringView written, bool isRight, const FindingRule& wrong) {
    if (const QString joined = joinedNumbers(text, written); !joined.isEmpty())
        return {&kJoinedNumbers,
                quoted(joined) + QStringLiteral(" stand on two lines, and are read as one number")};
    if (const QStringView number = firstOtherNumber(text); !number.isNull())
        return {&kNumberForm, formOf(number)};
    if (isRight) return {&kListForm, quoted(text) + QStringLiteral(" is not in the form that is read")};
    return {&wrong, quoted(text) + QStringLiteral(" is faulty")};
}

}  // namespace

QString joinedNumbers(QStringView text, QStringView written) {
    if (written.isNull() || written.size() == text.size()) return {};
    const auto isPart = [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.'; };
    qsizetype at = 0;  // in the text that is read
    for (qsizetype i = 0; i < written.size(); ++i) {
        if (at < text.size() && text[at] == written[i]) {
            ++at;
            continue;
        }
        // A break, which is not in the text that is read.
        qsizetype end = i;
        while (end < written.size() && isBlank(written[end].unicode()) &&
               (at == text.size() || written[end] != text[at]))
            ++end;
        if (end == i) return {};  // another difference
        if (i > 0 && end < written.size() && isPart(written[i - 1]) && isPart(written[end])) {
            qsizetype from = i;
            qsizetype to = end;
            while (from > 0 && isPart(written[from - 1])) --from;
            while (to < written.size() && isPart(written[to])) ++to;
            return QStringLiteral("%1 %2").arg(written.mid(from, i - from), written.mid(end, to - end));
        }
        i = end - 1;
    }
    return {};
}

Fault faultOfTransform(QStringView text, QStringView written) {
    const bool isRight = readTransform(written.isNull() ? text : written).has_value();
    const QChar last = text.isEmpty() ? QChar() : text.back();
    if (isRight && (last.isSpace() || last == u',') && firstOtherNumber(text).isNull())
        return {&kListForm, quoted(text) + QStringLiteral(" ends with a blank or a comma")};
    return faultOf(text, written, isRight, kTransformValue);
}

Fault faultOfPathData(QStringView text, QStringView written) {
    bool isRight = false;
    readPathData(written.isNull() ? text : written, &isRight);
    return faultOf(text, written, isRight, kValue);
}

Fault faultOfPoints(QStringView text, QStringView written) {
    const size_t count = readPoints(written.isNull() ? text : written).size();
    if (count == 0) return {&kMissingValue, QStringLiteral("it has no points")};
    Fault fault = faultOf(text, written, true, kValue);
    if (fault.rule != &kListForm) return fault;
    return {&kListForm, quoted(text) + QStringLiteral(" is not pairs with commas and blanks between them")};
}

}  // namespace tznormalize

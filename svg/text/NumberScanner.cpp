// See the header. Tested by tests/text/NumbersTest.cpp.
#include "svg/text/NumberScanner.h"

#include "svg/text/NumberText.h"

namespace tzsvg {

bool scanNumber(QStringView text, qsizetype& position, double& value) {
    value = 0.0;
    skipWhiteSpace(text, position);
    const char16_t* const begin = text.utf16();
    const char16_t* const textEnd = begin + text.size();
    const char16_t* const plainEnd = readPlainNumber(begin + position, textEnd, value);
    // A second point, and digits of other scripts, are for the long way.
    if (plainEnd && (plainEnd == textEnd || (*plainEnd != u'.' && *plainEnd < 0x80))) {
        position = plainEnd - begin;
        return true;
    }
    value = 0.0;

    qsizetype end = position;
    if (end < text.size() && text.at(end) == u'-') ++end;
    bool sawPoint = false;
    for (; end < text.size(); ++end) {
        const QChar c = text.at(end);
        if (c == u'.') {
            // "0.5.5" is refused, not split into two numbers. Meant so; NumberScanner/secondPoint pins it.
            if (sawPoint) return false;
            sawPoint = true;
        } else if (!c.isDigit()) {
            break;
        }
    }
    bool ok = false;
    const double number = toDouble(text.mid(position, end - position), ok);
    if (!ok) return false;
    value = number;
    position = end;
    return true;
}

}  // namespace tzsvg

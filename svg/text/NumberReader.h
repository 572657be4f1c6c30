// Numbers out of text, always in the C locale: a whole text as one number, the next of several numbers, and
// stored text with a scan format. Used by every reader of attribute text.
#pragma once

#include <QStringView>

namespace tzsvg {

// The number that the whole text is, exactly as QString::toDouble reads it, at a fraction of its cost. `ok`
// tells whether it is one: 0.0 with ok false for other text, infinity with ok false on overflow; "inf" and
// "nan" are read.
double toDouble(QStringView text, bool& ok);

// The same without the flag: 0.0 for what cannot be read.
inline double toDouble(QStringView text) {
    bool ok = false;
    return toDouble(text, ok);
}

// Skips white space, then reads an optional "-", digits and at most one ".". A "+" is not accepted, an
// exponent is not part of the number, and a second "." fails the scan. On success the value, with `position`
// behind the last character of the number; on failure 0.0, with `position` behind the skipped blanks.
bool scanNumber(QStringView text, qsizetype& position, double& value);

// Reads the plain number that a text begins with: digits with or without a "-" before and a point among them,
// what nearly every number of a drawing is. The answer is where it ends, at the first other character or at a
// second point; null, with `value` unchanged, when there are no digits or more than fifteen.
const char16_t* readPlainNumber(const char16_t* text, const char16_t* end, double& value);

// Moves `position` past white space.
inline void skipWhiteSpace(QStringView text, qsizetype& position) {
    while (position < text.size() && text.at(position).isSpace()) ++position;
}

// As sscanf(text, format, ...), with a decimal point whatever locale the host has set: the number of items
// read. For view boxes and colours. [any thread]
int scanText(const char* text, const char* format, ...) __attribute__((format(scanf, 2, 3)));

}  // namespace tzsvg

// The number scanner: one signed decimal number out of a text in which numbers follow one another. Used by
// the transform and path data readers.
#pragma once

#include <QStringView>

namespace tzsvg {

// Skips white space, then reads an optional "-", digits and at most one ".". A "+" is not accepted, an
// exponent is not part of the number, and a second "." fails the scan. On success the value, with `position`
// behind the last character of the number; on failure 0.0, with `position` behind the skipped blanks.
bool scanNumber(QStringView text, qsizetype& position, double& value);

// Moves `position` past white space.
inline void skipWhiteSpace(QStringView text, qsizetype& position) {
    while (position < text.size() && text.at(position).isSpace()) ++position;
}

}  // namespace tzsvg

// Text to double as QString::toDouble reads it (C locale), at a fraction of its cost for plain numbers.
// Used by all readers of this folder.
#pragma once

#include <QStringView>

namespace tzsvg {

// The number that the whole text is; `ok` tells whether it is one. As QString::toDouble: 0.0 with ok false
// for other text, infinity with ok false when it overflows; "inf" and "nan" are read.
double toDouble(QStringView text, bool& ok);

// The same without the flag: 0.0 for what cannot be read.
inline double toDouble(QStringView text) {
    bool ok = false;
    return toDouble(text, ok);
}

// Reads the number that a text begins with: digits with or without a "-" before and a point among them, what
// nearly every number in a drawing is. Where it ends: at the first other character, or at a second point.
// Null, with `value` unchanged, when there are no digits or more than fifteen.
const char16_t* readPlainNumber(const char16_t* text, const char16_t* end, double& value);

}  // namespace tzsvg

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

}  // namespace tzsvg

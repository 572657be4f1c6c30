// The reader of the "transform" attribute.
#pragma once

#include <QString>
#include <QTransform>
#include <vector>

namespace tzsvg {

// Reads a list of transform functions; the right-most is applied to points first. False, with the identity,
// on the first thing that does not fit, trailing blanks and empty text included.
bool parseTransformList(QStringView text, QTransform& transform);

// Reads a parenthesised list of `required` and up to `optional` more numbers, commas having been replaced by
// blanks. On success `position` is behind the ")"; on failure `values` is empty.
bool parseArgumentList(QStringView text, qsizetype& position, int required, int optional,
                       std::vector<double>& values);

}  // namespace tzsvg

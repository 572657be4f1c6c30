// The reader of path data, the "d" attribute of "path".
#pragma once

#include <QStringView>

#include "normalize/geometry/Path.h"

namespace tznormalize {

// Reads path data as renderers do: the path up to the first fault, everything absolute, quadratic curves and
// arcs as cubic ones. A sub-path that goes on after a closing gets a move of its own. `isComplete`, if given,
// tells whether there was no fault. Empty text, and "none", give an empty path.
Path readPathData(QStringView text, bool* isComplete = nullptr);

// Reads the corners of "polygon" and "polyline" up to the first fault; a last number without a partner is
// left out.
std::vector<Point> readPoints(QStringView text);

}  // namespace tznormalize

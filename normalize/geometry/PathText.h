// Paths as text that an import reads and an export writes the same.
#pragma once

#include <string>

#include "normalize/geometry/Path.h"

namespace tznormalize {

class Grid;

// Path data: absolute, coordinates on the grid, blanks between numbers, no exponents. Lines of no length are
// left out, and moves and closings that nothing is left of; empty when nothing is left to draw.
//
// A line over x = 0 is written as a curve: the import writes a line as a curve with controls at its thirds,
// and one that comes out next to 0 leaves as an exponent ("1e-17"), which no import reads.
std::string pathText(const Path& path, const Grid& grid);

// "points": pairs with commas, blanks between them.
std::string pointsText(const std::vector<Point>& points, const Grid& grid);

// Whether a circle or ellipse of numbers on the grid comes back: not when a control point of its outline
// comes out next to 0, with an exponent. It is written as a path then.
bool ellipseSurvives(const Point& centre, double rx, double ry, double step);

}  // namespace tznormalize

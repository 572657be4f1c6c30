// Elliptical arcs as cubic curves.
#pragma once

#include "normalize/geometry/Path.h"

namespace tznormalize {

// Control points of a quarter circle lie this share of the radius from its ends.
constexpr double kQuarterCircle = 0.5522847498307936;

// An arc as path data writes it: radii, rotation of the ellipse in degrees, flags and end point.
struct Arc {
    double rx, ry;
    double rotation;
    bool isLarge;
    bool isSweep;
    Point end;
};

// Appends the arc from `start`, the path's last point, in at most four curves. Radii too small for the
// distance are scaled up; with a radius of 0 it is a straight line, with its end at its start nothing. The
// centre is found as the implementation notes of SVG 1.1 say (F.6.5, F.6.6).
void appendArc(Path& path, const Point& start, const Arc& arc);

}  // namespace tznormalize

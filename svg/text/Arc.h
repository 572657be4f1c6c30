// Elliptical arcs of path data as cubic Bezier segments.
#pragma once

#include <QPainterPath>
#include <QPointF>

namespace tzsvg {

// An arc as path data writes it: radii, rotation of the ellipse in degrees, flags and end point.
struct Arc {
    double rx, ry;
    double rotation;
    bool large;
    bool sweep;
    QPointF end;
};

// Appends the arc from `start` to the path, in at most five cubics. Radii too small for the distance are
// scaled up; with a radius of 0 the arc is a straight line, with its end at its start nothing. False when a
// point comes out too large for Qt or not a number: the path is not usable then.
//
// The conversion from end points to a centre follows the implementation notes of SVG 1.1 (F.6.5, F.6.6),
// carried out on the unit circle; trigonometry and roots are in single precision, which is part of the
// design: imported points are compared with those of earlier imports. PathData/arcInSinglePrecision pins it.
bool appendArc(const QPointF& start, const Arc& arc, QPainterPath& path);

}  // namespace tzsvg

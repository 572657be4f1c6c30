// Which outlines may be those of rectangles, as Qt draws these in ways of its own. Used by TrimmingEngine;
// pure.
#pragma once

#include <QPainterPath>

namespace tzsvg {

// Whether a path may be what QPainter makes of a rectangle with rounded corners for a device of ours. For an
// image it makes another one, whose numbers the path does not tell.
bool mayBeRoundedRect(const QPainterPath& path);

// Whether a polygon may be a rectangle. Qt fills these otherwise than other polygons.
bool mayBeRect(const QPointF* points, int count);

}  // namespace tzsvg

// The outlines of the basic shapes, in their own space, each begun where dashes begin.
#pragma once

#include "normalize/geometry/Path.h"
#include "normalize/text/Length.h"

namespace tznormalize {

class Cascade;
class SourceElement;

// The outline of a "path", "rect", "circle", "ellipse", "line", "polyline" or "polygon" from its attributes,
// or from what style sheets say instead of them; empty when it draws nothing (no size, no points) or is not
// finite.
Path outlineOf(const SourceElement& element, const Cascade& cascade, const Viewport& viewport,
               double fontSize);

Path rectangleOutline(const Box& box);
Path roundedRectangleOutline(const Box& box, double rx, double ry);  // radii above 0, at most half the size
Path ellipseOutline(const Point& centre, double rx, double ry);
Path polygonOutline(const std::vector<Point>& corners, bool isClosed);

}  // namespace tznormalize

// The points that an import makes of a shape.
#pragma once

#include <QPointF>
#include <vector>

#include "svg/text/Length.h"
#include "svg/tree/XmlNode.h"

namespace tznormalize {

// Anchors and control points in the shape's own space, in the order in which they come into the scene; each
// only once. Empty when the shape gives no polygon.
std::vector<QPointF> importedPoints(const tzsvg::XmlNode& shape, const tzsvg::LengthContext& lengths);

}  // namespace tznormalize

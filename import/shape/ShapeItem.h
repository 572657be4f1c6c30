// Shape items: the import's form of one SVG shape, a graphics item in the element's own user coordinates.
// Built here from the element's attributes; the converters read the geometry back. No item is put into a
// graphics scene.
#pragma once

#include <QDomNode>
#include <QGraphicsEllipseItem>
#include <QGraphicsLineItem>
#include <QGraphicsPathItem>
#include <QGraphicsPolygonItem>
#include <QGraphicsRectItem>
#include <memory>

#include "import/shape/RoundedRectItem.h"
#include "import/shape/ShapeElement.h"
#include "import/text/Length.h"

namespace tzsvg {

// True for an element named exactly "circle", "ellipse", "line", "path", "polygon", "polyline" or "rect".
bool isShapeElement(const QDomNode& node);

// The item of a shape element, or none: for other nodes and elements, and when its builder gives none.
// Letter case of the name does not matter here, though it does in isShapeElement(); meant so.
// ShapeItem/nameCase pins both.
std::unique_ptr<QGraphicsItem> createShapeItem(const QDomNode& node, const LengthContext& lengths);
std::unique_ptr<QGraphicsItem> createShapeItem(const ShapeElement& element, const LengthContext& lengths);

// One builder an element kind. Absent attributes count as 0, malformed ones too; nothing is checked for its
// sign or size. None when the points or path data do not read.
std::unique_ptr<QGraphicsEllipseItem> buildEllipseItem(const ShapeElement& element,
                                                       const LengthContext& lengths);
std::unique_ptr<QGraphicsLineItem> buildLineItem(const ShapeElement& element, const LengthContext& lengths);
// A QGraphicsItemRoundedRect when "rx" or "ry" is present.
std::unique_ptr<QGraphicsRectItem> buildRectItem(const ShapeElement& element, const LengthContext& lengths);
std::unique_ptr<QGraphicsPolygonItem> buildPolygonItem(const ShapeElement& element);
std::unique_ptr<QGraphicsPathItem> buildPolylineItem(const ShapeElement& element);
std::unique_ptr<QGraphicsPathItem> buildPathItem(const ShapeElement& element);

// The item of a path or polyline that was parsed before.
std::unique_ptr<QGraphicsPathItem> makePathItem(const QPainterPath& path);

}  // namespace tzsvg

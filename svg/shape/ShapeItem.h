// Shape items: the import's form of one SVG shape, a graphics item in the element's own user coordinates.
// Built here from the element's attributes; the converters read the geometry back. No item is put into a
// graphics scene.
#pragma once

#include <QGraphicsEllipseItem>
#include <QGraphicsLineItem>
#include <QGraphicsPathItem>
#include <QGraphicsPolygonItem>
#include <QGraphicsRectItem>
#include <memory>

#include "svg/text/Length.h"
#include "svg/tree/XmlNode.h"

namespace tzsvg {

// A rectangle with corner radii, which Qt has no item for.
class QGraphicsItemRoundedRect : public QGraphicsRectItem {
  public:
    QGraphicsItemRoundedRect(const QRectF& rect, double rx, double ry)
        : QGraphicsRectItem(rect), rx_(rx), ry_(ry) {}

    double rx() const { return rx_; }
    double ry() const { return ry_; }

  private:
    double rx_;
    double ry_;
};

// The item of a shape element, or none: for other nodes and elements, and when its builder gives none. Letter
// case of the name does not matter here, though it does in XmlNode::isShape(); meant so: the builders serve
// any caller, only the exact names are imported. ShapeItem/nameCase pins both.
std::unique_ptr<QGraphicsItem> createShapeItem(const XmlNode& node, const LengthContext& lengths);

// One builder an element kind. Absent attributes count as 0, malformed ones too; nothing is checked for its
// sign or size. None when the points or path data do not read.
std::unique_ptr<QGraphicsEllipseItem> buildEllipseItem(const XmlNode& element, const LengthContext& lengths);
std::unique_ptr<QGraphicsLineItem> buildLineItem(const XmlNode& element, const LengthContext& lengths);
// A QGraphicsItemRoundedRect when "rx" or "ry" is present.
std::unique_ptr<QGraphicsRectItem> buildRectItem(const XmlNode& element, const LengthContext& lengths);
std::unique_ptr<QGraphicsPolygonItem> buildPolygonItem(const XmlNode& element);
std::unique_ptr<QGraphicsPathItem> buildPolylineItem(const XmlNode& element);
std::unique_ptr<QGraphicsPathItem> buildPathItem(const XmlNode& element);

// The path of a path element; false when it is absent or does not read.
bool readPath(const XmlNode& element, QPainterPath& path);

// The item of a path or polyline that was parsed before.
std::unique_ptr<QGraphicsPathItem> makePathItem(const QPainterPath& path);

}  // namespace tzsvg

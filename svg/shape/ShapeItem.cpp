#include "svg/shape/ShapeItem.h"

#include <QPen>
#include <algorithm>

#include "svg/text/PathData.h"
#include "svg/text/PointList.h"

namespace tzsvg {
namespace {

// Qt's default pen is 1 wide and would widen the bounds of an item; they are the geometry's own here.
template <class Item, class... Arguments>
std::unique_ptr<Item> makeItem(Arguments&&... arguments) {
    static const QPen kHairline{QBrush(Qt::black), 0};
    auto item = std::make_unique<Item>(std::forward<Arguments>(arguments)...);
    item->setPen(kHairline);
    return item;
}

// Reads lengths of one element.
class Lengths {
  public:
    Lengths(const XmlNode& element, const LengthContext& context) : element_(element), context_(context) {}

    double horizontal(Attribute name) const { return read(name, Axis::kHorizontal); }
    double vertical(Attribute name) const { return read(name, Axis::kVertical); }

  private:
    double read(Attribute name, Axis axis) const {
        return parseLength(element_.attribute(name), axis, context_);
    }

    const XmlNode& element_;
    const LengthContext& context_;
};

// Reads "points"; false when it is absent or malformed.
bool pointsOf(const XmlNode& element, QVector<QPointF>& points) {
    return element.has(Attribute::kPoints) && readPointList(element.attribute(Attribute::kPoints), points);
}

}  // namespace

// A path of a single point needs care: the item's constructor takes it for an empty one and drops it, and
// setPath() ignores one at the origin, taking it for the path it already has.
std::unique_ptr<QGraphicsPathItem> makePathItem(const QPainterPath& path) {
    auto item = makeItem<QGraphicsPathItem>(path);
    if (item->path().elementCount() != path.elementCount()) {
        QPainterPath other;
        other.lineTo(1, 1);
        item->setPath(other);
        item->setPath(path);
    }
    return item;
}

std::unique_ptr<QGraphicsItem> createShapeItem(const XmlNode& node, const LengthContext& lengths) {
    if (!node.isElement()) return nullptr;
    const Element name = node.element();
    switch (name == Element::kOther ? elementNamed(node.name().toCaseFolded()) : name) {
        case Element::kCircle:
        case Element::kEllipse:
            return buildEllipseItem(node, lengths);
        case Element::kLine:
            return buildLineItem(node, lengths);
        case Element::kPath:
            return buildPathItem(node);
        case Element::kPolygon:
            return buildPolygonItem(node);
        case Element::kPolyline:
            return buildPolylineItem(node);
        case Element::kRect:
            return buildRectItem(node, lengths);
        default:
            return nullptr;
    }
}

std::unique_ptr<QGraphicsEllipseItem> buildEllipseItem(const XmlNode& element, const LengthContext& lengths) {
    const Lengths read(element, lengths);
    const double cx = read.horizontal(Attribute::kCx);
    const double cy = read.vertical(Attribute::kCy);
    // "r" sets both radii whatever the element's name, and "rx" and "ry" then replace one each: a circle with
    // "rx" is an ellipse. Meant so: the tags of stored scenes tell the radii in this way; ShapeItem/ellipse
    // pins it.
    double rx = read.horizontal(Attribute::kR);
    double ry = rx;
    if (element.has(Attribute::kRx)) rx = read.horizontal(Attribute::kRx);
    if (element.has(Attribute::kRy)) ry = read.vertical(Attribute::kRy);
    return makeItem<QGraphicsEllipseItem>(cx - rx, cy - ry, 2 * rx, 2 * ry);
}

std::unique_ptr<QGraphicsLineItem> buildLineItem(const XmlNode& element, const LengthContext& lengths) {
    const Lengths read(element, lengths);
    return makeItem<QGraphicsLineItem>(read.horizontal(Attribute::kX1), read.vertical(Attribute::kY1),
                                       read.horizontal(Attribute::kX2), read.vertical(Attribute::kY2));
}

std::unique_ptr<QGraphicsRectItem> buildRectItem(const XmlNode& element, const LengthContext& lengths) {
    const Lengths read(element, lengths);
    const QRectF rect(read.horizontal(Attribute::kX), read.vertical(Attribute::kY),
                      read.horizontal(Attribute::kWidth), read.vertical(Attribute::kHeight));
    if (!element.has(Attribute::kRx) && !element.has(Attribute::kRy))
        return makeItem<QGraphicsRectItem>(rect);
    // A radius that is absent stays 0, it is not copied from the other; neither is clamped. Meant so, stored
    // scenes tell both as they were written; Tags/primitives pins it.
    return makeItem<QGraphicsItemRoundedRect>(rect, read.horizontal(Attribute::kRx),
                                              read.vertical(Attribute::kRy));
}

std::unique_ptr<QGraphicsPolygonItem> buildPolygonItem(const XmlNode& element) {
    QVector<QPointF> points;
    if (!pointsOf(element, points) || points.isEmpty()) return nullptr;
    return makeItem<QGraphicsPolygonItem>(QPolygonF(points));
}

std::unique_ptr<QGraphicsPathItem> buildPolylineItem(const XmlNode& element) {
    QVector<QPointF> points;
    if (!pointsOf(element, points)) return nullptr;
    if (!std::all_of(points.cbegin(), points.cend(), fitsPainterPath)) return nullptr;
    QPainterPath path;
    if (!points.isEmpty()) path.moveTo(points.first());
    for (int i = 1; i < points.size(); ++i) path.lineTo(points.at(i));
    return makePathItem(path);
}

std::unique_ptr<QGraphicsPathItem> buildPathItem(const XmlNode& element) {
    QPainterPath path;
    return readPath(element, path) ? makePathItem(path) : nullptr;
}

bool readPath(const XmlNode& element, QPainterPath& path) {
    return element.has(Attribute::kData) && parsePathData(element.attribute(Attribute::kData), path);
}

}  // namespace tzsvg

#include "normalize/check/ImportedPoints.h"

#include <QGraphicsItem>

#include "normalize/geometry/Arc.h"
#include "svg/shape/ShapeItem.h"

namespace tznormalize {
namespace {

// Straight segments of a path have controls at their thirds, in single precision.
std::vector<QPointF> pathPoints(const QPainterPath& path, bool isStraight) {
    std::vector<QPointF> points;
    points.reserve(3 * static_cast<size_t>(path.elementCount()));
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        const QPointF to(element.x, element.y);
        if (element.isLineTo() && !isStraight) {
            const QPointF from = points.back();
            for (const double part : {1.0 / 3.0, 2.0 / 3.0}) {
                points.emplace_back(static_cast<float>(from.x() + (to.x() - from.x()) * part),
                                    static_cast<float>(from.y() + (to.y() - from.y()) * part));
            }
        }
        points.push_back(to);
    }
    return points;
}

std::vector<QPointF> ellipsePoints(const QRectF& rect) {
    const QPointF c = rect.center();
    const double rx = rect.width() / 2;
    const double ry = rect.height() / 2;
    std::vector<QPointF> points;
    for (const auto& [x, y] : {std::pair{0.0, 1.0},
                               {kQuarterCircle, 1.0},
                               {1.0, kQuarterCircle},
                               {1.0, 0.0},
                               {0.0, -1.0},
                               {-1.0, 0.0}}) {
        points.emplace_back(c.x() + x * rx, c.y() + y * ry);
    }
    return points;
}

}  // namespace

std::vector<QPointF> importedPoints(const tzsvg::XmlNode& shape, const tzsvg::LengthContext& lengths) {
    const auto item = tzsvg::createShapeItem(shape, lengths);
    if (const auto* const path = dynamic_cast<const QGraphicsPathItem*>(item.get()))
        return pathPoints(path->path(), shape.element() == tzsvg::Element::kPolyline);
    if (const auto* const polygon = dynamic_cast<const QGraphicsPolygonItem*>(item.get())) {
        const QPolygonF corners = polygon->polygon();
        return {corners.begin(), corners.end()};
    }
    if (const auto* const ellipse = dynamic_cast<const QGraphicsEllipseItem*>(item.get()))
        return ellipsePoints(ellipse->rect());
    if (const auto* const line = dynamic_cast<const QGraphicsLineItem*>(item.get()))
        return {line->line().p1(), line->line().p2()};
    if (const auto* const rect = dynamic_cast<const QGraphicsRectItem*>(item.get())) {
        const QRectF box = rect->rect();
        return {box.topLeft(),
                {box.x() + box.width(), box.y()},
                {box.x() + box.width(), box.y() + box.height()},
                {box.x(), box.y() + box.height()}};
    }
    return {};
}

}  // namespace tznormalize

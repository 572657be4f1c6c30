#include "svg/shape/DocumentExtent.h"

#include <algorithm>

#include "svg/shape/ElementTransform.h"
#include "svg/shape/ShapeItem.h"

namespace tzsvg {
namespace {

// The boundingRect() of a shape's item. For a path no item is needed: its pen has no width.
bool itemBounds(const XmlNode& node, const LengthContext& lengths, QRectF& bounds, ParsedPaths* paths) {
    const auto take = [&](const QPainterPath& path) {
        if (paths) paths->keep(node, path);
        bounds = path.controlPointRect();
        return true;
    };
    if (node.element() == Element::kPath) {
        QPainterPath path;
        return readPath(node, path) && take(path);
    }
    const auto item = createShapeItem(node, lengths);
    if (!item) return false;
    if (item->type() == QGraphicsPathItem::Type)
        return take(static_cast<const QGraphicsPathItem&>(*item).path());
    bounds = item->boundingRect();
    return true;
}

}  // namespace

bool elementBounds(const XmlNode& node, const LengthContext& lengths, ElementBounds& bounds,
                   ParsedPaths* paths) {
    bounds = {};
    if (!node.isShape()) return true;
    QRectF own;
    QTransform transform;
    if (!itemBounds(node, lengths, own, paths) || !elementTransform(node, transform)) return false;
    // A rectangle of negative size is mapped as it is by a mere move.
    const QRectF rect = transform.mapRect(own).normalized();
    bounds = {rect.left(), rect.left() + rect.width(), rect.top(), rect.top() + rect.height()};
    return true;
}

double elementMaxY(const XmlNode& node, const LengthContext& lengths, bool& ok, ParsedPaths* paths) {
    ElementBounds bounds{};
    ok = elementBounds(node, lengths, bounds, paths);
    return std::max(bounds.minY, bounds.maxY);
}

double documentMaxY(const XmlNode& root, const LengthContext& lengths, bool& ok, ParsedPaths* paths) {
    double largest = 0.0;
    ok = true;
    // In document order: the largest value does not depend on the order.
    for (const XmlNode* node = root.nextBelow(root); node && ok; node = node->nextBelow(root)) {
        largest = std::max(largest, elementMaxY(*node, lengths, ok, paths));
    }
    return largest;
}

}  // namespace tzsvg

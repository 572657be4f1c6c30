// See the header. Called once a load, before everything else.
#include "import/shape/DocumentExtent.h"

#include <algorithm>

#include "import/shape/ElementTransform.h"
#include "import/shape/ShapeItem.h"

namespace tzsvg {

bool elementBounds(const QDomNode& node, const LengthContext& lengths, ElementBounds& bounds,
                   ParsedPaths* paths) {
    bounds = {};
    if (!isShapeElement(node)) return true;
    const ShapeElement element(node.toElement());
    const auto item = createShapeItem(element, lengths);
    QTransform transform;
    if (!item || !elementTransform(element, transform)) return false;
    if (paths && item->type() == QGraphicsPathItem::Type)
        paths->keep(node, static_cast<const QGraphicsPathItem&>(*item).path());
    const QRectF rect = transform.mapRect(item->boundingRect());
    bounds = {rect.left(), rect.left() + rect.width(), rect.top(), rect.top() + rect.height()};
    return true;
}

double elementMaxY(const QDomNode& node, const LengthContext& lengths, bool& ok, ParsedPaths* paths) {
    ElementBounds bounds{};
    ok = elementBounds(node, lengths, bounds, paths);
    return std::max(bounds.minY, bounds.maxY);
}

double documentMaxY(const QDomNode& root, const LengthContext& lengths, bool& ok, ParsedPaths* paths) {
    // Depth first without a stack: the largest value does not depend on the order.
    double largest = 0.0;
    ok = true;
    for (QDomNode node = root.firstChild(); !node.isNull();) {
        largest = std::max(largest, elementMaxY(node, lengths, ok, paths));
        if (!ok) return largest;
        QDomNode next = node.firstChild();
        while (next.isNull() && node != root) {
            next = node.nextSibling();
            if (next.isNull()) node = node.parentNode();
        }
        node = next;
    }
    return largest;
}

}  // namespace tzsvg

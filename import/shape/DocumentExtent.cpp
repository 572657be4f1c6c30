// See the header. Called once a load, before everything else.
#include "import/shape/DocumentExtent.h"

#include <algorithm>

#include "import/shape/ElementTransform.h"
#include "import/shape/ShapeItem.h"

namespace tzsvg {

bool elementBounds(const XmlNode& node, const LengthContext& lengths, ElementBounds& bounds,
                   ParsedPaths* paths) {
    bounds = {};
    if (!node.isShape()) return true;
    const auto item = createShapeItem(node, lengths);
    QTransform transform;
    if (!item || !elementTransform(node, transform)) return false;
    if (paths && item->type() == QGraphicsPathItem::Type)
        paths->keep(node, static_cast<const QGraphicsPathItem&>(*item).path());
    // A rectangle of negative size is mapped as it is by a mere move.
    const QRectF rect = transform.mapRect(item->boundingRect()).normalized();
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
    // In document order, as good as any: the largest value does not depend on it.
    for (const XmlNode* node = root.nextBelow(root); node && ok; node = node->nextBelow(root)) {
        largest = std::max(largest, elementMaxY(*node, lengths, ok, paths));
    }
    return largest;
}

}  // namespace tzsvg

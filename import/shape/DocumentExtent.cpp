// See the header. Called once a load, before everything else.
#include "import/shape/DocumentExtent.h"

#include <algorithm>

#include "import/shape/ElementTransform.h"
#include "import/shape/ShapeItem.h"

namespace tzsvg {

bool elementBounds(const QDomNode& node, const LengthContext& lengths, ElementBounds& bounds) {
    bounds = {};
    if (!isShapeElement(node)) return true;
    const auto item = createShapeItem(node, lengths);
    QTransform transform;
    if (!item || !elementTransform(node, transform)) return false;
    const QRectF rect = transform.mapRect(item->boundingRect());
    bounds = {rect.left(), rect.left() + rect.width(), rect.top(), rect.top() + rect.height()};
    return true;
}

double elementMaxY(const QDomNode& node, const LengthContext& lengths, bool& ok) {
    ElementBounds bounds{};
    ok = elementBounds(node, lengths, bounds);
    return std::max(bounds.minY, bounds.maxY);
}

double documentMaxY(const QDomNode& root, const LengthContext& lengths, bool& ok) {
    // Depth first without a stack: the largest value does not depend on the order.
    double largest = 0.0;
    ok = true;
    for (QDomNode node = root.firstChild(); !node.isNull();) {
        largest = std::max(largest, elementMaxY(node, lengths, ok));
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

// The text of the `PRIM` tag: which kind of element a polygon came from.
#pragma once

#include <QGraphicsItem>
#include <string>

namespace tzsvg {

class XmlNode;

// The kind in capitals; for rectangles, circles and ellipses with their numbers, as in CIRCLE{CX:5,CY:5,R:2}.
// Empty when the item is not of the element's kind, or the element no shape.
std::string primitiveText(const XmlNode& element, const QGraphicsItem& item);

}  // namespace tzsvg

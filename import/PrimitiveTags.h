// Primitive tags: which kind of element a polygon came from. Called by the tag chain.
#pragma once

#include <QGraphicsItem>
#include <string>

namespace tzsvg {

class SVGLoader;
class XmlNode;

// The text that describes an element and its item: the kind in capitals, for rectangles, circles and ellipses
// with their numbers, as in CIRCLE{CX:5,CY:5,R:2}. Empty when the item is not of the element's kind, or the
// element no shape.
std::string primitiveText(const XmlNode& element, const QGraphicsItem& item);

// Stores that text as `PRIM`, and `VCMP` "1" beside it. False for a node that is no shape element.
bool writePrimitiveTags(SVGLoader& loader, const XmlNode& node, const QGraphicsItem& item);

}  // namespace tzsvg
